#include "ContactUnitsTestSupport.h"
#include "contacts/ContactUnit.h"
#include "contacts/HardwareInContactUnit.h"
#include "contacts/HardwareOutContactCollectionUnit.h"
#include "contacts/HardwareOutContactUnit.h"
#include "core/common/TypeHelper.h"
#include "core/device/HardwareManager.h"
#include "core/tree/NodeFactory.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

namespace {

using ContactUnitsTest::HardwareNode;
using ContactUnitsTest::loadFromString;
using ContactUnitsTest::makeMode;
using ContactUnitsTest::saveToString;
using ZemTree::Node;
using ZemTree::NodeFactory;
using ZemTree::SerializationMode;

// Each registered unit type is built by the factory under its class name, carries that name in a saved file, and
// is made again from the file.
TEST(ContactUnitsRegistrationTest, FactoryBuildsEveryRegisteredTypeAndFilesNameIt)
{
    ZemDevice::HardwareManager hardware;
    const struct {
        const char* id;
        const std::type_info& type;
        std::function<bool(const Node*)> isKind;
    } rows[] = {
        {"ContactUnit", typeid(ZemTree::ContactUnit),
         [](const Node* node) { return dynamic_cast<const ZemTree::ContactUnit*>(node) != nullptr; }},
        {"HardwareInContactUnit", typeid(ZemTree::HardwareInContactUnit),
         [](const Node* node) { return dynamic_cast<const ZemTree::HardwareInContactUnit*>(node) != nullptr; }},
        {"HardwareOutContactUnit", typeid(ZemTree::HardwareOutContactUnit),
         [](const Node* node) { return dynamic_cast<const ZemTree::HardwareOutContactUnit*>(node) != nullptr; }},
        {"HardwareOutContactCollectionUnit", typeid(ZemTree::HardwareOutContactCollectionUnit),
         [](const Node* node) {
             return dynamic_cast<const ZemTree::HardwareOutContactCollectionUnit*>(node) != nullptr;
         }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.id);
        const std::string typeName = Zem::TypeHelper::getTypeName(row.type);
        ASSERT_TRUE(NodeFactory::isRegistered(typeName));
        std::unique_ptr<Node> made = NodeFactory::create(typeName);
        ASSERT_NE(nullptr, made);
        EXPECT_TRUE(row.isKind(made.get()));
        EXPECT_EQ(row.id, made->getId());

        for (ZemDevice::HardwareManager* used : {&hardware, static_cast<ZemDevice::HardwareManager*>(nullptr)}) {
            HardwareNode source("Root", used);
            Node* const unit = source.add(NodeFactory::create(typeName));
            // Looked at once, as a view would, so that the working value exists before the save.
            ASSERT_NE(nullptr, dynamic_cast<ZemTree::IValueOut*>(unit));
            dynamic_cast<ZemTree::IValueOut*>(unit)->getValueObject();
            const std::string saved = saveToString(source, makeMode(SerializationMode::User));
            EXPECT_NE(std::string::npos, saved.find("Class=\"" + typeName + "\""));

            HardwareNode target("Root", used);
            std::vector<std::string> problems;
            loadFromString(target, saved, makeMode(SerializationMode::User, &problems));
            EXPECT_TRUE(problems.empty());
            ASSERT_EQ(1u, target.size());
            EXPECT_TRUE(row.isKind(target.at(0)));
            EXPECT_EQ(saved, saveToString(target, makeMode(SerializationMode::User)));
        }
    }
}

} // namespace
