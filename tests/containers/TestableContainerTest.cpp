#include "ContainerTestNodes.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

using namespace ZemTree;
using namespace ZemTreeTest;

namespace {

using Flag = Zem::Nullable<bool>;
const Flag empty;

// Root > Collection > protections > Tests > tests, with each test's flag as given.
struct Tree {
    SampleRoot root;
    std::vector<SampleProtection*> protections;
    std::vector<std::vector<SampleTest*>> tests;

    explicit Tree(const std::vector<std::vector<bool>>& flags)
    {
        root.initContainer();
        for (std::size_t p = 0; p < flags.size(); ++p) {
            auto* protection = addFilled<SampleProtection>(root.getContainers(), "P" + std::to_string(p));
            protections.push_back(protection);
            tests.emplace_back();
            for (std::size_t t = 0; t < flags[p].size(); ++t) {
                auto* test = addFilled<SampleTest>(protection->getTests(), "T" + std::to_string(t));
                test->setIsEvaluated(flags[p][t]);
                tests.back().push_back(test);
            }
        }
    }
};

// Counts the evaluated signals of every testable container below a node, the node included.
class SignalCounter {
public:
    explicit SignalCounter(Node* node) { _watch(node); }
    int of(Node* node) const
    {
        const auto found = _counts.find(dynamic_cast<ITestableContainer*>(node));
        return found == _counts.end() ? 0 : found->second;
    }
    int total() const
    {
        int sum = 0;
        for (const auto& entry : _counts)
            sum += entry.second;
        return sum;
    }

private:
    void _watch(Node* node)
    {
        if (auto* testable = dynamic_cast<TestableContainer*>(node))
            testable->getSignalIsEvaluatedChanged().connect([this](ITestableContainer* source) { ++_counts[source]; });
        for (Node* child : *node)
            _watch(child);
    }
    std::map<ITestableContainer*, int> _counts;
};

} // namespace

TEST(TestableContainer, CascadeOfTheEvaluatedFlag)
{
    struct Row {
        const char* text;
        std::vector<std::vector<bool>> flags;
        std::vector<Flag> protections;
        Flag root;
    };
    const std::vector<Row> rows = {
        {"all chosen", {{true, true}, {true}}, {true, true}, true},
        {"none chosen", {{false, false}, {false}}, {false, false}, false},
        {"mixed in one protection", {{true, false}, {true}}, {empty, true}, empty},
        {"protections differ", {{true, true}, {false}}, {true, false}, empty},
        {"an empty protection empties its parent", {{true}, {}}, {true, empty}, empty},
        {"nothing at all", {}, {}, empty},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        Tree tree(row.flags);
        for (std::size_t p = 0; p < row.protections.size(); ++p)
            EXPECT_EQ(tree.protections[p]->getIsEvaluated(), row.protections[p]) << "protection " << p;
        EXPECT_EQ(tree.root.getIsEvaluated(), row.root);
    }
}

TEST(TestableContainer, SetOnMixedGroupPublishesOnceOnEachChangedContainer)
{
    Tree tree({{true, false}, {true}});
    SignalCounter counter(&tree.root);
    SampleProtection* mixed = tree.protections[0];

    mixed->setIsEvaluated(true);

    EXPECT_EQ(counter.of(tree.tests[0][1]), 1);
    EXPECT_EQ(counter.of(mixed->getTests()), 1);
    EXPECT_EQ(counter.of(mixed), 1);
    EXPECT_EQ(counter.of(tree.root.getContainers()), 1);
    EXPECT_EQ(counter.of(&tree.root), 1);
    // Already chosen: nothing to publish.
    EXPECT_EQ(counter.of(tree.tests[0][0]), 0);
    EXPECT_EQ(counter.of(tree.protections[1]), 0);
    EXPECT_EQ(counter.total(), 5);
    EXPECT_EQ(tree.root.getIsEvaluated(), Flag(true));

    // The same again changes nothing and says nothing.
    mixed->setIsEvaluated(true);
    EXPECT_EQ(counter.total(), 5);
}

TEST(TestableContainer, AddingAndRemovingAChosenTest)
{
    Tree tree({{false, false}});
    SampleProtection* group = tree.protections[0];
    SignalCounter counter(&tree.root);

    auto chosen = std::make_unique<SampleTest>("Chosen");
    chosen->initContainer();
    chosen->setIsEvaluated(true);
    SampleTest* added = group->getTests()->add(std::move(chosen));

    EXPECT_EQ(group->getIsEvaluated(), empty);
    EXPECT_EQ(tree.root.getIsEvaluated(), empty);
    EXPECT_EQ(counter.of(group), 1);
    EXPECT_EQ(counter.of(&tree.root), 1);

    group->getTests()->remove(added);

    EXPECT_EQ(group->getIsEvaluated(), Flag(false));
    EXPECT_EQ(tree.root.getIsEvaluated(), Flag(false));
    EXPECT_EQ(counter.of(group), 2);
    EXPECT_EQ(counter.of(group->getTests()), 2);
    EXPECT_EQ(counter.of(&tree.root), 2);
}

TEST(TestableContainer, RemovingAnEmptyGroupRestoresItsParent)
{
    Tree tree({{true}, {}});
    ASSERT_EQ(tree.root.getIsEvaluated(), empty);
    SignalCounter counter(&tree.root);

    tree.root.getContainers()->remove(tree.protections[1]);

    EXPECT_EQ(tree.root.getIsEvaluated(), Flag(true));
    EXPECT_EQ(counter.of(&tree.root), 1);
}
