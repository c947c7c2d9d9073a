#include "core/formula/EmbeddedDispatcher.h"

#include "FormulaTestNodes.h"
#include "core/formula/EmbeddedFormula.h"
#include "core/formula/ValueFormula.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using FormulaTest::QualifiedContainer;
using FormulaTest::TargetContainer;
using FormulaTest::ValueNode;
using ZemTree::EmbeddedDispatcher;
using ZemTree::EmbeddedFormula;
using ZemTree::ExtendedTypeInfo;
using ZemTree::Node;

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

} // namespace
