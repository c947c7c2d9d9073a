#include "ContainerTestNodes.h"
#include "containers/DefendCollectionContainer.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>

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
