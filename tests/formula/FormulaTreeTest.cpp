#include "FormulaTestNodes.h"
#include "core/formula/EmbeddedDispatcher.h"
#include "core/formula/EmbeddedFormula.h"
#include "core/formula/TreeWatcher.h"
#include "core/formula/ValueFormula.h"
#include "core/tree/Node.h"
#include "core/tree/ValueErrors.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using FormulaTest::FormulaNode;
using FormulaTest::ValueNode;
using ZemTree::Node;
using ZemTree::ValueFormula;

// Root
// ├── Settings
// │   ├── Iset  (2)
// │   └── Tset  (3)
// └── Parameters
//     └── Unit       the context of the formulas
class ValueFormulaTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        root = std::make_unique<Node>("Root");
        settings = root->add(std::make_unique<Node>("Settings"));
        iset = settings->add(std::make_unique<ValueNode>("Iset", 2.0));
        tset = settings->add(std::make_unique<ValueNode>("Tset", 3.0));
        parameters = root->add(std::make_unique<Node>("Parameters"));
        unit = parameters->add(std::make_unique<Node>("Unit"));
    }

    // Counts the emissions of a formula's signal.
    void listen(ValueFormula& formula)
    {
        formula.getSignalValueOutChanged().connect([this] { ++changes; });
    }

    static double number(const ValueFormula& formula)
    {
        const auto& out = formula.getValueOut();
        if (out.error != nullptr)
            throw std::runtime_error(out.error->what());
        return out.value->getNumber();
    }

    static std::string errorText(const ValueFormula& formula)
    {
        const auto& out = formula.getValueOut();
        EXPECT_NE(out.value, nullptr);
        return out.error == nullptr ? std::string() : out.error->what();
    }

    std::unique_ptr<Node> root;
    Node* settings = nullptr;
    ValueNode* iset = nullptr;
    ValueNode* tset = nullptr;
    Node* parameters = nullptr;
    Node* unit = nullptr;
    int changes = 0;
};

TEST_F(ValueFormulaTest, EvaluatesOnceUntilSomethingChanges)
{
    ValueFormula formula(unit, "{../../Settings/Iset} + {../../Settings/Iset}");
    EXPECT_EQ(iset->readCount, 0) << "reading is lazy";
    EXPECT_EQ(number(formula), 4.0);
    EXPECT_EQ(number(formula), 4.0);
    EXPECT_EQ(iset->readCount, 1);

    iset->setNumber(5.0);
    EXPECT_EQ(number(formula), 10.0);
    EXPECT_EQ(iset->readCount, 2);
}

TEST_F(ValueFormulaTest, AReferencedValueChangeRecalculatesAndSignals)
{
    ValueFormula formula(unit, "{../../Settings/Iset} * {../../Settings/Tset}");
    EXPECT_EQ(number(formula), 6.0);
    EXPECT_EQ(formula.getTargets(), (std::vector<Node*>{iset, tset}));
    double seen = 0.0;
    formula.getSignalValueOutChanged().connect([&] {
        ++changes;
        seen = number(formula);
    });

    iset->setNumber(4.0);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(seen, 12.0);

    // An unrelated node's change is not the formula's business.
    settings->add(std::make_unique<ValueNode>("Other", 1.0))->setNumber(9.0);
    EXPECT_EQ(changes, 1);
}

TEST_F(ValueFormulaTest, AMissingBranchAddedLaterResolves)
{
    ValueFormula formula(unit, "{../../Limits/High/Value} * 2");
    listen(formula);
    EXPECT_NE(errorText(formula), "");

    // The whole branch comes at once, already built.
    auto limits = std::make_unique<Node>("Limits");
    Node* high = limits->add(std::make_unique<Node>("High"));
    high->add(std::make_unique<ValueNode>("Value", 21.0));
    root->add(std::move(limits));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(number(formula), 42.0);

    // An unrelated sibling along the way changes nothing; the new node is followed from then on.
    high->add(std::make_unique<Node>("Low"));
    EXPECT_EQ(changes, 1);
    static_cast<ValueNode*>(high->at(0))->setNumber(1.0);
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(number(formula), 2.0);
}

TEST_F(ValueFormulaTest, ARemovedReferenceBecomesAnErrorWithoutDangling)
{
    ValueFormula formula(unit, "{../../Settings/Iset} + 1");
    listen(formula);
    EXPECT_EQ(number(formula), 3.0);

    settings->remove(iset); // deleted once the signals are through
    iset = nullptr;
    EXPECT_EQ(changes, 1);
    EXPECT_NE(errorText(formula).find("Unresolved reference"), std::string::npos);
    EXPECT_EQ(formula.getTargets(), (std::vector<Node*>{nullptr}));

    // The removal of a branch above the target is noticed as well.
    ValueFormula other(unit, "{../../Settings/Tset}");
    int otherChanges = 0;
    other.getSignalValueOutChanged().connect([&] { ++otherChanges; });
    EXPECT_EQ(number(other), 3.0);
    root->remove(settings);
    EXPECT_EQ(otherChanges, 1);
    EXPECT_NE(errorText(other), "");
}

TEST_F(ValueFormulaTest, MovingTheContextRedirectsItsReferences)
{
    // Elsewhere
    // └── Inner
    //     └── (Unit goes here)
    // with Elsewhere/Settings/Iset = 7.
    Node* elsewhere = root->add(std::make_unique<Node>("Elsewhere"));
    Node* inner = elsewhere->add(std::make_unique<Node>("Inner"));
    Node* otherSettings = elsewhere->add(std::make_unique<Node>("Settings"));
    otherSettings->add(std::make_unique<ValueNode>("Iset", 7.0));

    ValueFormula formula(unit, "{../../Settings/Iset}");
    listen(formula);
    EXPECT_EQ(number(formula), 2.0);

    std::unique_ptr<Node> moving = parameters->release(unit);
    EXPECT_EQ(changes, 1);
    EXPECT_NE(errorText(formula), "");
    inner->add(std::move(moving));
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(number(formula), 7.0);
}

TEST_F(ValueFormulaTest, ErrorsStandBesideANumberZero)
{
    for (const std::string text : {"1 +", "sqrt(\"x\")", "{nowhere}"}) {
        SCOPED_TRACE(text);
        ValueFormula formula(unit, text);
        const auto& out = formula.getValueOut();
        ASSERT_NE(out.value, nullptr);
        EXPECT_EQ(out.value->getNumber(), 0.0);
        EXPECT_NE(dynamic_cast<const ZemTree::FormulaError*>(out.error.get()), nullptr);
    }
    ValueFormula noValue(unit, "{../../Settings} + 1");
    EXPECT_NE(errorText(noValue).find("the node 'Settings' has no value"), std::string::npos);
    ValueFormula noContext(nullptr, "{Iset}");
    EXPECT_NE(errorText(noContext).find("Unresolved reference '{Iset}'"), std::string::npos);
}

TEST_F(ValueFormulaTest, AReferencedErrorIsHandedOn)
{
    ValueFormula formula(unit, "{../../Settings/Iset} * 2");
    listen(formula);
    iset->setError(ZemTree::DataConvertionError::getInstance());
    EXPECT_EQ(changes, 1);
    EXPECT_NE(errorText(formula).find(ZemTree::DataConvertionError::getInstance()->what()), std::string::npos);
}

TEST_F(ValueFormulaTest, FormulasFollowFormulas)
{
    // Parameters/B = Iset * 2; Parameters/A = B + 1.
    auto* b = parameters->add(std::make_unique<FormulaNode>("B", "{../../Settings/Iset} * 2"));
    auto* a = parameters->add(std::make_unique<FormulaNode>("A", "{../B} + 1"));
    int aChanges = 0;
    a->getFormula().getSignalValueOutChanged().connect([&] { ++aChanges; });
    EXPECT_EQ(number(a->getFormula()), 5.0);
    iset->setNumber(10.0);
    EXPECT_EQ(aChanges, 1);
    EXPECT_EQ(number(a->getFormula()), 21.0);
    EXPECT_EQ(number(b->getFormula()), 20.0);
}

TEST_F(ValueFormulaTest, ACycleIsAnErrorAndItsSignalsEnd)
{
    // A = B + Iset, B = A: each needs the other.
    auto* a = parameters->add(std::make_unique<FormulaNode>("A", "{../B} + {../../Settings/Iset}"));
    auto* b = parameters->add(std::make_unique<FormulaNode>("B", "{../A}"));
    int aChanges = 0;
    int bChanges = 0;
    a->getFormula().getSignalValueOutChanged().connect([&] { ++aChanges; });
    b->getFormula().getSignalValueOutChanged().connect([&] { ++bChanges; });

    EXPECT_NE(errorText(a->getFormula()).find("Circular reference"), std::string::npos);
    EXPECT_NE(errorText(b->getFormula()).find("Circular reference"), std::string::npos);

    iset->setNumber(4.0);
    EXPECT_EQ(aChanges, 1);
    EXPECT_EQ(bChanges, 1);

    // A self-reference as well.
    auto* self = parameters->add(std::make_unique<FormulaNode>("Self", "{.} + 1"));
    EXPECT_NE(errorText(self->getFormula()).find("Circular reference"), std::string::npos);
}

// A cycle of any length is an error of each formula on it, whichever is read first: none of them computes a number
// from another's half-done state. A formula that only reads the cycle carries the error on; breaking the cycle
// brings the numbers back.
TEST_F(ValueFormulaTest, ACycleOfAnyLengthIsAnErrorOfEachMember)
{
    const struct {
        const char* text;
        std::vector<std::string> formulas;
    } rows[] = {
        {"two", {"{../F1} + 1", "{../F0} * 2"}},
        {"three", {"{../F1} * 2", "{../F2} / 100", "{../F0} * 10"}},
        {"four, through a sum", {"{../F1} + {../../Settings/Iset}", "{../F2}", "{../F3} - 1", "{../F0}"}},
    };
    for (const auto& row : rows) {
        const std::size_t length = row.formulas.size();
        for (std::size_t first = 0; first < length; ++first) {
            SCOPED_TRACE(std::string(row.text) + ", read from F" + std::to_string(first));
            SetUp();
            std::vector<FormulaNode*> members;
            for (std::size_t i = 0; i < length; ++i)
                members.push_back(
                    parameters->add(std::make_unique<FormulaNode>("F" + std::to_string(i), row.formulas[i])));
            auto* reader = parameters->add(std::make_unique<FormulaNode>("Reader", "{../F0} + 1"));
            for (std::size_t i = 0; i < length; ++i) {
                FormulaNode* const member = members[(first + i) % length];
                EXPECT_NE(errorText(member->getFormula()).find("Circular reference"), std::string::npos)
                    << member->getId();
                EXPECT_TRUE(member->getFormula().isOnCycle()) << member->getId();
            }
            EXPECT_FALSE(reader->getFormula().isOnCycle());
            EXPECT_FALSE(errorText(reader->getFormula()).empty());

            // The last member now reads a constant: the cycle is gone and every formula has a number again.
            parameters->remove(members.back());
            auto* constant = parameters->add(std::make_unique<FormulaNode>("F" + std::to_string(length - 1), "3"));
            members.back() = constant;
            for (FormulaNode* member : members) {
                EXPECT_FALSE(member->getFormula().isOnCycle()) << member->getId();
                EXPECT_EQ("", errorText(member->getFormula())) << member->getId();
            }
            EXPECT_EQ("", errorText(reader->getFormula()));
        }
    }
}

TEST_F(ValueFormulaTest, OutlivingItsTreeIsSafe)
{
    auto formula = std::make_unique<ValueFormula>(unit, "{../../Settings/Iset} + 1");
    listen(*formula);
    EXPECT_EQ(number(*formula), 3.0);
    // The tree goes at once, from its root: no collection signal tells about it.
    root.reset();
    EXPECT_EQ(changes, 0);
    EXPECT_NE(errorText(*formula).find("Unresolved reference"), std::string::npos);
    formula.reset();
}

TEST_F(ValueFormulaTest, ASlotMayDestroyTheFormula)
{
    // A value that drops its evaluator when told, as a new formula text does.
    auto byValue = std::make_unique<ValueFormula>(unit, "{../../Settings/Iset}");
    byValue->getSignalValueOutChanged().connect([&] { byValue.reset(); });
    iset->setNumber(1.0);
    EXPECT_EQ(byValue, nullptr);

    auto byTree = std::make_unique<ValueFormula>(unit, "{../../Settings/Late}");
    byTree->getSignalValueOutChanged().connect([&] { byTree.reset(); });
    settings->add(std::make_unique<ValueNode>("Late", 1.0));
    EXPECT_EQ(byTree, nullptr);
}

TEST_F(ValueFormulaTest, DestroyingTheFormulaDisconnects)
{
    auto formula = std::make_unique<ValueFormula>(unit, "{../../Settings/Iset}");
    listen(*formula);
    formula.reset();
    iset->setNumber(8.0);
    settings->add(std::make_unique<Node>("New"));
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(iset->signalValueOutChanged.empty());
    EXPECT_TRUE(settings->getSignalCollectionChanged().empty());
}

using FormulaTest::QualifiedContainer;
using FormulaTest::TargetContainer;
using ZemTree::EmbeddedDispatcher;
using ZemTree::EmbeddedFormula;
using ZemTree::ExtendedTypeInfo;

// Root
// └── Block
//     └── Parameters
//         └── Owner       the unit that holds the embedded formula
class EmbeddedDispatcherTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        root = std::make_unique<Node>("Root");
        block = root->add(std::make_unique<Node>("Block"));
        parameters = block->add(std::make_unique<Node>("Parameters"));
        owner = parameters->add(std::make_unique<Node>("Owner"));
    }

    std::unique_ptr<EmbeddedDispatcher> dispatch(EmbeddedFormula& formula)
    {
        auto dispatcher = std::make_unique<EmbeddedDispatcher>(owner, &formula);
        dispatcher->getSignalTargetChanged().connect([this] { ++targetChanges; });
        return dispatcher;
    }

    std::unique_ptr<Node> root;
    Node* block = nullptr;
    Node* parameters = nullptr;
    Node* owner = nullptr;
    EmbeddedFormula targetFormula{ExtendedTypeInfo::of<TargetContainer>(), "{Iset} * 2"};
    int targetChanges = 0;
};

TEST_F(EmbeddedDispatcherTest, FindsTheSiblingOfAnAncestorAtOnce)
{
    auto* settings = block->add(std::make_unique<TargetContainer>("Settings"));
    auto* iset = settings->add(std::make_unique<ValueNode>("Iset", 1.5));
    auto dispatcher = dispatch(targetFormula);
    EXPECT_EQ(dispatcher->getTarget(), settings);
    EXPECT_EQ(targetChanges, 0);

    // The rewritten formula, evaluated in the owner's context, reads the target's node.
    ZemTree::ValueFormula formula(owner, dispatcher->getCalculatedFormula());
    ASSERT_EQ(formula.getValueOut().error, nullptr);
    EXPECT_EQ(formula.getValueOut().value->getNumber(), 3.0);
    EXPECT_EQ(formula.getTargets(), (std::vector<Node*>{iset}));
}

TEST_F(EmbeddedDispatcherTest, CalculatedFormulaRewritesEveryReference)
{
    block->add(std::make_unique<TargetContainer>("Settings"));
    const std::vector<std::pair<std::string, std::string>> rows{
        {"{.}", "{../../Settings}"},
        {"{../Other/X}", "{../../Other/X}"},
        {"{Group/../Iset}", "{../../Settings/Iset}"},
        {"{a} + {b/c} * \"{not a path}\"", "{../../Settings/a} + {../../Settings/b/c} * \"{not a path}\""},
        {"1 + 2", "1 + 2"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first);
        EmbeddedFormula formula(ExtendedTypeInfo::of<TargetContainer>(), row.first);
        const auto dispatcher = dispatch(formula);
        EXPECT_EQ(dispatcher->getCalculatedFormula(), row.second);
    }
}

TEST_F(EmbeddedDispatcherTest, AnAncestorItselfCanBeTheTarget)
{
    auto block2 = std::make_unique<TargetContainer>("Protection");
    Node* protection = block2.get();
    Node* section = protection->add(std::make_unique<Node>("Section"));
    Node* deepOwner = section->add(std::make_unique<Node>("Unit"));
    root->add(std::move(block2));

    EmbeddedFormula formula(ExtendedTypeInfo::of<TargetContainer>(), "{Setting}");
    EmbeddedDispatcher dispatcher(deepOwner, &formula);
    EXPECT_EQ(dispatcher.getTarget(), protection);
    EXPECT_EQ(dispatcher.getCalculatedFormula(), "{../../Setting}");
}

TEST_F(EmbeddedDispatcherTest, TheNearestMatchWinsAndTheOwnerNeverMatches)
{
    auto* far = root->add(std::make_unique<TargetContainer>("Far"));
    auto* near = block->add(std::make_unique<TargetContainer>("Near"));
    EmbeddedFormula formula(ExtendedTypeInfo::of<Node>(), "{x}");

    // Every node here is a Node by type only if its dynamic type is exactly Node: the owner is one, and is skipped.
    EmbeddedDispatcher plain(owner, &formula);
    EXPECT_EQ(plain.getTarget(), parameters);

    auto dispatcher = dispatch(targetFormula);
    EXPECT_EQ(dispatcher->getTarget(), near);
    block->remove(near);
    EXPECT_EQ(dispatcher->getTarget(), far);
    EXPECT_EQ(targetChanges, 1);
}

TEST_F(EmbeddedDispatcherTest, FindsATargetAddedLaterExactlyOnce)
{
    auto dispatcher = dispatch(targetFormula);
    EXPECT_EQ(dispatcher->getTarget(), nullptr);
    EXPECT_EQ(dispatcher->getCalculatedFormula(), "{Iset} * 2");

    block->add(std::make_unique<Node>("Unrelated"));
    EXPECT_EQ(targetChanges, 0);

    auto* settings = block->add(std::make_unique<TargetContainer>("Settings"));
    EXPECT_EQ(targetChanges, 1);
    EXPECT_EQ(dispatcher->getTarget(), settings);
    EXPECT_EQ(dispatcher->getCalculatedFormula(), "{../../Settings/Iset} * 2");

    // Farther candidates do not change the nearest target.
    root->add(std::make_unique<TargetContainer>("Far"));
    EXPECT_EQ(targetChanges, 1);
    EXPECT_EQ(dispatcher->getTarget(), settings);
}

TEST_F(EmbeddedDispatcherTest, MovingTheOwnerNearATargetFinds)
{
    Node* elsewhere = root->add(std::make_unique<Node>("Elsewhere"));
    auto* settings = elsewhere->add(std::make_unique<TargetContainer>("Settings"));
    auto dispatcher = dispatch(targetFormula);
    EXPECT_EQ(dispatcher->getTarget(), nullptr);

    // The owner is moved with its parent.
    elsewhere->add(block->release(parameters));
    EXPECT_EQ(targetChanges, 1);
    EXPECT_EQ(dispatcher->getTarget(), settings);
    EXPECT_EQ(dispatcher->getCalculatedFormula(), "{../../Settings/Iset} * 2");
}

TEST_F(EmbeddedDispatcherTest, AContainerMatchesByItsOwnInfoAndByItsClass)
{
    auto* protection = block->add(std::make_unique<QualifiedContainer>("Distance"));
    EmbeddedFormula qualified(ExtendedTypeInfo("Relay::Protection", "Distance"), "{Z1}");
    EXPECT_EQ(EmbeddedDispatcher(owner, &qualified).getTarget(), protection);
    EmbeddedFormula byClass(ExtendedTypeInfo::of<QualifiedContainer>(), "{Z1}");
    EXPECT_EQ(EmbeddedDispatcher(owner, &byClass).getTarget(), protection);

    EmbeddedFormula otherQualifier(ExtendedTypeInfo("Relay::Protection", "Overcurrent"), "{I1}");
    EXPECT_EQ(EmbeddedDispatcher(owner, &otherQualifier).getTarget(), nullptr);
}

TEST_F(EmbeddedDispatcherTest, AnUndefinedTargetOrNoOwnerFindsNothing)
{
    block->add(std::make_unique<TargetContainer>("Settings"));
    EmbeddedFormula undefined;
    EXPECT_EQ(EmbeddedDispatcher(owner, &undefined).getTarget(), nullptr);
    EXPECT_EQ(EmbeddedDispatcher(owner, nullptr).getTarget(), nullptr);
    EXPECT_EQ(EmbeddedDispatcher(nullptr, &targetFormula).getCalculatedFormula(), "{Iset} * 2");
}

TEST_F(EmbeddedDispatcherTest, OutlivingItsTreeIsSafe)
{
    block->add(std::make_unique<TargetContainer>("Settings"));
    auto dispatcher = dispatch(targetFormula);
    ASSERT_NE(dispatcher->getTarget(), nullptr);
    root.reset();
    EXPECT_EQ(dispatcher->getTarget(), nullptr);
    EXPECT_EQ(targetChanges, 0);
}

TEST_F(EmbeddedDispatcherTest, ItsSlotMayDestroyIt)
{
    // A unit serves the formula once and lets its dispatcher go from within the signal.
    auto dispatcher = std::make_unique<EmbeddedDispatcher>(owner, &targetFormula);
    std::string served;
    dispatcher->getSignalTargetChanged().connect([&] {
        served = dispatcher->getCalculatedFormula();
        dispatcher.reset();
    });
    block->add(std::make_unique<TargetContainer>("Settings"));
    EXPECT_EQ(dispatcher, nullptr);
    EXPECT_EQ(served, "{../../Settings/Iset} * 2");
    EXPECT_TRUE(block->getSignalCollectionChanged().empty());
}

using ZemTree::TreeWatcher;

struct Counts {
    int tree = 0;
    int value = 0;
    std::vector<const Node*> destroyed;
};

TreeWatcher::Handlers countInto(Counts& counts)
{
    return TreeWatcher::Handlers{[&counts] { ++counts.tree; }, [&counts] { ++counts.value; },
                                 [&counts](const Node* node) { counts.destroyed.push_back(node); }};
}

TEST(TreeWatcherTest, ASilentlyDestroyedNodeIsForgottenAndReported)
{
    auto root = std::make_unique<Node>("Root");
    Node* child = root->add(std::make_unique<Node>("Child"));
    Counts counts;
    TreeWatcher watcher(countInto(counts));
    watcher.watch({{child, TreeWatcher::PositionChanged}, {root.get(), TreeWatcher::CollectionChanged}});
    ASSERT_TRUE(watcher.isWatching(child));

    const Node* const rootAddress = root.get();
    root.reset();
    // The child goes first, from its parent's destructor; then the handler is told once per node.
    ASSERT_EQ(counts.destroyed.size(), 2u);
    EXPECT_EQ(counts.destroyed[0], child);
    EXPECT_EQ(counts.destroyed[1], rootAddress);
    EXPECT_FALSE(watcher.isWatching(child));
    EXPECT_EQ(counts.tree, 0);
}

TEST(TreeWatcherTest, AHandlerMayRewatchWhileItsSignalIsEmitted)
{
    Node root("Root");
    Node* child = root.add(std::make_unique<Node>("Child"));
    int calls = 0;
    std::unique_ptr<TreeWatcher> watcher;
    bool widen = false;
    watcher = std::make_unique<TreeWatcher>(TreeWatcher::Handlers{
        [&] {
            ++calls;
            std::vector<std::pair<Node*, unsigned>> nodes{{&root, TreeWatcher::CollectionChanged}};
            if (widen)
                nodes.emplace_back(child, TreeWatcher::CollectionChanged);
            watcher->watch(nodes);
        },
        nullptr, nullptr});
    watcher->watch({{&root, TreeWatcher::CollectionChanged}});
    root.add(std::make_unique<Node>("A"));
    root.add(std::make_unique<Node>("B"));
    EXPECT_EQ(calls, 2);

    // A changed set renews connections during the emission; the new ones wait for the next change.
    widen = true;
    root.add(std::make_unique<Node>("C"));
    EXPECT_EQ(calls, 3);
    EXPECT_TRUE(watcher->isWatching(child));
    child->add(std::make_unique<Node>("D"));
    EXPECT_EQ(calls, 4);
}

} // namespace
