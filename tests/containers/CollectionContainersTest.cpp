#include "ContainerTestNodes.h"
#include "containers/DefendCollectionContainer.h"
#include "containers/DefendGroupContainer.h"
#include "core/tree/DisplayXmlParameters.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>

using namespace ZemTree;
using namespace ZemTreeTest;

namespace {

class RootTest : public SampleTest, public virtual IRootContainer {};
class RootObject : public HierarchicalContainer, public virtual IRootContainer {};

class OtherTest : public TestContainer {
public:
    OtherTest() : TestContainer("Other") {}
};

// A protection that takes only sample tests.
class PickyProtection : public DefendContainer {
public:
    PickyProtection() : DefendContainer("Picky") {}
    int asked = 0;

protected:
    bool _canContainsTest(Node* item) override
    {
        ++asked;
        return dynamic_cast<SampleTest*>(item) != nullptr;
    }
};

class SampleGroup : public DefendGroupContainer {
public:
    SampleGroup() : DefendGroupContainer("Group") {}

protected:
    bool _canContainsDefend(Node* item) override { return dynamic_cast<SampleProtection*>(item) != nullptr; }
};

std::string reportTypeOf(const Node& node)
{
    xmlpp::Document document;
    DisplayXmlParameters parameters("/tmp");
    node.getDisplayXml(parameters, document.create_root_node("Report"));
    const auto* element = static_cast<const xmlpp::Element*>(document.get_root_node()->find("Node").front());
    return element->get_attribute_value("DataType");
}

} // namespace

TEST(CollectionContainers, TestCollectionAcceptsPlainTestsOnly)
{
    TestCollectionContainer tests;
    SampleTest test;
    RootTest rootTest;
    DefendContainer protection;
    NumberUnit unit;
    EXPECT_TRUE(tests.canContains(&test));
    EXPECT_FALSE(tests.canContains(&rootTest));
    EXPECT_FALSE(tests.canContains(&protection));
    EXPECT_FALSE(tests.canContains(&unit));
    EXPECT_FALSE(tests.canContains(nullptr));
    EXPECT_THROW(tests.add(std::make_unique<DefendContainer>()), std::logic_error);
    EXPECT_TRUE(tests.empty());
}

TEST(CollectionContainers, PredicateDecidesAfterTheClass)
{
    TestCollectionContainer none("Tests", [](Node*) { return false; });
    SampleTest test;
    EXPECT_FALSE(none.canContains(&test));

    int asked = 0;
    DefendCollectionContainer defends("Defends", [&asked](Node*) {
        ++asked;
        return true;
    });
    SampleTest notAProtection;
    EXPECT_FALSE(defends.canContains(&notAProtection));
    EXPECT_EQ(asked, 0);
    SampleProtection protection;
    EXPECT_TRUE(defends.canContains(&protection));
    EXPECT_EQ(asked, 1);
}

TEST(CollectionContainers, HierarchicalCollectionRefusesRoots)
{
    HierarchicalContainer object("Object");
    object.initContainer();
    EXPECT_NO_THROW(object.getContainers()->add(std::make_unique<HierarchicalContainer>("Inner")));
    EXPECT_NO_THROW(object.getContainers()->add(std::make_unique<SampleProtection>("Protection")));
    EXPECT_THROW(object.getContainers()->add(std::make_unique<RootObject>()), std::logic_error);
    EXPECT_THROW(object.getContainers()->add(std::make_unique<DefendContainer>()), std::logic_error);
    EXPECT_EQ(object.getContainers()->size(), 2u);
}

TEST(CollectionContainers, ProtectionFilterIsAskedOnEveryAdd)
{
    PickyProtection protection;
    protection.initContainer();
    EXPECT_NO_THROW(protection.getTests()->add(std::make_unique<SampleTest>("A")));
    EXPECT_THROW(protection.getTests()->add(std::make_unique<OtherTest>()), std::logic_error);
    EXPECT_NO_THROW(protection.getTests()->add(std::make_unique<SampleTest>("B")));
    EXPECT_EQ(protection.asked, 3);
    EXPECT_EQ(protection.getTests()->size(), 2u);
}

TEST(CollectionContainers, GroupHoldsProtectionsItAccepts)
{
    static_assert(std::is_abstract<DefendGroupContainer>::value, "a group decides in a concrete class");
    SampleGroup group;
    group.initContainer();
    ASSERT_NE(group.getDefends(), nullptr);
    EXPECT_EQ(group.back()->getId(), "Defends");
    EXPECT_NO_THROW(group.getDefends()->add(std::make_unique<SampleProtection>("P")));
    EXPECT_THROW(group.getDefends()->add(std::make_unique<DefendContainer>()), std::logic_error);
}

TEST(CollectionContainers, ModesAndReportWords)
{
    struct Row {
        const char* text;
        std::unique_ptr<TestableContainer> container;
        bool isFixed;
        ContainerHierarchicalMode mode;
        const char* dataType;
    };
    Row rows[] = {
        {"base", std::make_unique<CollectionBaseContainer>(), false, ContainerHierarchicalMode::None,
         "CollectionContainer"},
        {"tests", std::make_unique<TestCollectionContainer>(), true, ContainerHierarchicalMode::Parameters,
         "TestCollectionContainer"},
        {"defends", std::make_unique<DefendCollectionContainer>(), false, ContainerHierarchicalMode::None,
         "DefendCollectionContainer"},
        {"hierarchical", std::make_unique<HierarchicalCollectionContainer>(), false, ContainerHierarchicalMode::None,
         "CollectionContainer"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.container->hasFixedHierarchicalMode(), row.isFixed);
        EXPECT_EQ(row.container->getHierarchicalMode(), row.mode);
        EXPECT_EQ(reportTypeOf(*row.container), row.dataType);
    }
}
