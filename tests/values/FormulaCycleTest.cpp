#include "core/tree/Node.h"
#include "values/Unit.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using NumberUnit = ZemTree::Unit<double>;

// Three settings whose formulas read each other round: Tolerance = Step * 2, Step = RampStart / 100,
// RampStart = Tolerance * 10, and a fourth, Reader, that only reads Step.
struct CycleTree {
    std::unique_ptr<ZemTree::Node> root = std::make_unique<ZemTree::Node>("Test");
    ZemTree::Node* settings = root->add(std::make_unique<ZemTree::Node>("Settings"));
    std::vector<NumberUnit*> units;
    NumberUnit* reader = nullptr;
    int signals = 0;

    CycleTree(const std::vector<std::size_t>& formulaOrder, bool isWatched)
    {
        static const char* const ids[] = {"Tolerance", "Step", "RampStart"};
        static const char* const formulas[] = {"{../Step}*2", "{../RampStart}/100", "{../Tolerance}*10"};
        for (const char* id : ids)
            units.push_back(settings->add(
                std::make_unique<NumberUnit>(id, ZemTree::LocalString::Empty(), ZemTree::LocalString::Empty(), 1.0)));
        reader = settings->add(
            std::make_unique<NumberUnit>("Reader", ZemTree::LocalString::Empty(), ZemTree::LocalString::Empty(), 1.0));
        // A view listening computes each value out the moment it changes, in the order the edits come.
        if (isWatched)
            for (NumberUnit* unit : units)
                unit->signalValueOutChanged.connect([this] { ++signals; });
        reader->setFormula("{../Step}+1");
        reader->setIsFormulaSource(true);
        for (const std::size_t index : formulaOrder) {
            units[index]->setFormula(formulas[index]);
            units[index]->setIsFormulaSource(true);
        }
    }
};

std::string errorOf(const NumberUnit& unit)
{
    return unit.getError() == nullptr ? std::string() : unit.getError()->what();
}

} // namespace

// Whatever order the formulas are set in and the values are read in, with or without a listener, every unit on
// the cycle reports the cycle and none a number made from another's half-done value.
TEST(FormulaCycleTest, EveryUnitOnACycleOfThreeReportsTheCycle)
{
    std::vector<std::size_t> formulaOrder{0, 1, 2};
    do {
        for (const bool isWatched : {false, true}) {
            std::vector<std::size_t> readOrder{0, 1, 2};
            do {
                SCOPED_TRACE("formulas set " + std::to_string(formulaOrder[0]) + std::to_string(formulaOrder[1])
                             + std::to_string(formulaOrder[2]) + ", read " + std::to_string(readOrder[0])
                             + std::to_string(readOrder[1]) + std::to_string(readOrder[2])
                             + (isWatched ? ", watched" : ""));
                CycleTree tree(formulaOrder, isWatched);
                for (const std::size_t index : readOrder)
                    EXPECT_NE(std::string::npos, errorOf(*tree.units[index]).find("Circular reference"))
                        << tree.units[index]->getId() << " = " << tree.units[index]->getValue();
                // Off the cycle: an error handed on, not a number.
                EXPECT_FALSE(errorOf(*tree.reader).empty());
            } while (std::next_permutation(readOrder.begin(), readOrder.end()));
        }
    } while (std::next_permutation(formulaOrder.begin(), formulaOrder.end()));
}

TEST(FormulaCycleTest, BreakingTheCycleBringsTheNumbersBack)
{
    CycleTree tree({0, 1, 2}, true);
    ASSERT_FALSE(errorOf(*tree.units[0]).empty());
    tree.units[2]->setIsFormulaSource(false); // RampStart back to its data, 1.0
    for (NumberUnit* unit : tree.units)
        EXPECT_EQ("", errorOf(*unit)) << unit->getId();
    EXPECT_DOUBLE_EQ(0.02, tree.units[0]->getValue());
    EXPECT_DOUBLE_EQ(0.01, tree.units[1]->getValue());
    EXPECT_DOUBLE_EQ(1.01, tree.reader->getValue());
}
