#include "core/tree/NodeFactory.h"

#include "TreeTestNodes.h"
#include "core/common/TypeHelper.h"
#include "core/tree/EnumLimiter.h"
#include "core/tree/MeasureProperty.h"
#include "core/tree/NumericProperty.h"
#include "core/tree/StringUnit.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <typeinfo>

using namespace ZemTree;

namespace {

// Registered only by the test below, so the test owns its entry.
class LateNode : public Node {
public:
    LateNode() : Node("Late") {}
};

} // namespace

TEST(NodeFactoryTest, FirstRegistrationWinsAndBothReturnTrue)
{
    const std::string key = Zem::TypeHelper::getTypeName(typeid(LateNode));
    ASSERT_FALSE(NodeFactory::isRegistered(key));
    EXPECT_EQ(NodeFactory::create(key), nullptr);

    // An earlier maker under the same key, which gives itself away by the id of what it makes.
    NodeFactory::_getNodeMap()[key] = [] { return std::make_unique<Node>("FromFirstMaker"); };
    const std::size_t sizeBefore = NodeFactory::_getNodeMap().size();

    EXPECT_TRUE(NodeFactory::registerType<LateNode>());
    EXPECT_TRUE(NodeFactory::registerType<LateNode>());
    EXPECT_EQ(NodeFactory::_getNodeMap().size(), sizeBefore);
    const std::unique_ptr<Node> made = NodeFactory::create(key);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getId(), "FromFirstMaker");

    NodeFactory::_getNodeMap().erase(key);
    EXPECT_TRUE(NodeFactory::registerType<LateNode>());
    const std::unique_ptr<Node> late = NodeFactory::create(key);
    ASSERT_NE(late, nullptr);
    EXPECT_NE(dynamic_cast<LateNode*>(late.get()), nullptr);
    NodeFactory::_getNodeMap().erase(key);
}

TEST(NodeFactoryTest, RegisteredTypesBuildTheirOwnClass)
{
    struct Row {
        const std::type_info& type;
        bool (*isRightType)(const Node*);
    };
    const Row rows[] = {
        {typeid(StringUnit), [](const Node* n) { return dynamic_cast<const StringUnit*>(n) != nullptr; }},
        {typeid(TreeTest::TestGroup),
         [](const Node* n) { return dynamic_cast<const TreeTest::TestGroup*>(n) != nullptr; }},
        {typeid(EnumLimiter), [](const Node* n) { return dynamic_cast<const EnumLimiter*>(n) != nullptr; }},
        {typeid(NumericProperty), [](const Node* n) { return dynamic_cast<const NumericProperty*>(n) != nullptr; }},
        {typeid(MeasureProperty), [](const Node* n) { return dynamic_cast<const MeasureProperty*>(n) != nullptr; }},
    };
    for (const Row& row : rows) {
        const std::string key = Zem::TypeHelper::getTypeName(row.type);
        SCOPED_TRACE(key);
        EXPECT_TRUE(NodeFactory::isRegistered(key));
        const std::unique_ptr<Node> made = NodeFactory::create(key);
        ASSERT_NE(made, nullptr);
        EXPECT_TRUE(row.isRightType(made.get()));
        EXPECT_EQ(Zem::TypeHelper::getTypeName(typeid(*made)), key) << "the key names the dynamic type";
    }
    EXPECT_EQ(NodeFactory::create("ZemTree::Unknown"), nullptr);
}
