#include "results/ResultUnitBase.h"

#include "ResultUnitTestSupport.h"
#include "core/common/Point.h"
#include "core/common/TypeHelper.h"
#include "core/tree/NodeFactory.h"
#include "results/IResultUnit.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/ResultMultiNumericUnit.h"
#include "results/ResultMultiStringUnit.h"
#include "results/graph/GraphTimeManager.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace ResultUnitTest;
using ZemTree::IResultUnit;
using ZemTree::Node;
using ZemTree::NodeFactory;
using ZemTree::ResultState;
using ZemTree::SerializationMode;

namespace {

// What the three result units have in common, told per unit.
struct Kind {
    std::string className;
    std::string defaultId;
    // Stores a result that is neither Ok nor Empty into the unit's working value.
    std::function<void(Node&)> setFailedResult;
    // A data element that reads as an accepted result, and one that the unit's converter refuses.
    std::string goodElement;
    std::string badElement;
};

template <class Unit> std::string typeName()
{
    return Zem::TypeHelper::getTypeName(typeid(Unit));
}

std::vector<Kind> kinds()
{
    using StringMap = std::map<std::string, std::vector<std::string>>;
    return {
        {typeName<ZemTree::ResultMultiNumericUnit>(), "ResultMultiNumericUnit",
         [](Node& unit) {
             dynamic_cast<ZemTree::ResultMultiNumericUnit&>(unit).setData(
                 std::make_shared<ZemTree::ResultMultiNumeric>(StringMap{{"a", {"1", "x"}}}, nullptr));
         },
         "<ResultMultiNumeric><Items><Item Name=\"a\"><Value>1</Value></Item></Items></ResultMultiNumeric>",
         "<ResultMultiNumeric Assessment=\"Setting\"><Setting>two</Setting><Tolerance>|[-1;1]</Tolerance>"
         "<Items/></ResultMultiNumeric>"},
        {typeName<ZemTree::ResultMultiStringUnit>(), "ResultMultiStringUnit",
         [](Node& unit) {
             dynamic_cast<ZemTree::ResultMultiStringUnit&>(unit).setData(
                 std::make_shared<ZemTree::ResultMultiString>(StringMap{}, nullptr));
         },
         "<ResultMultiString><Items><Item Name=\"a\"><Value>on</Value></Item></Items></ResultMultiString>",
         "<ResultMultiString Assessment=\"Setting\"><Items/></ResultMultiString>"},
        {typeName<ZemTree::ResultMultiGraphUnit>(), "ResultMultiGraphUnit",
         [](Node& unit) {
             // The expected time is 1 s everywhere; 1.5 s at x = 2 is rejected.
             dynamic_cast<ZemTree::ResultMultiGraphUnit&>(unit).setData(std::make_shared<ZemTree::ResultMultiGraph>(
                 std::map<std::string, std::vector<Zem::Point>>{{"c", {{1.0, 1.0}, {2.0, 1.5}}}},
                 std::make_shared<ZemTree::GraphTimeManager>("I", nullptr, nullptr)));
         },
         "<ResultMultiGraph><Manager Type=\"" + typeName<ZemTree::GraphTimeManager>()
             + "\"/><Items><Item Name=\"c\"><Value>1;1</Value></Item></Items></ResultMultiGraph>",
         "<ResultMultiNumeric/>"},
    };
}

} // namespace

// How a test reads and empties its outcome: through IResultUnit, with the value's listeners told.
TEST(ResultUnitBaseTest, FactoryBuildsEveryUnitAndClearResultEmptiesItThroughItsSetter)
{
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.defaultId);
        const std::unique_ptr<Node> node = NodeFactory::create(kind.className);
        ASSERT_NE(node, nullptr);
        EXPECT_EQ(node->getId(), kind.defaultId);
        auto* const unit = dynamic_cast<IResultUnit*>(node.get());
        ASSERT_NE(unit, nullptr);
        EXPECT_EQ(unit->getResultValue(), nullptr) << "a new unit is not tested";

        int valueOutChanges = 0;
        unit->signalValueOutChanged.connect([&valueOutChanges] { ++valueOutChanges; });
        kind.setFailedResult(*node);
        EXPECT_EQ(valueOutChanges, 1);
        ASSERT_NE(unit->getResultValue(), nullptr);
        EXPECT_NE(unit->getResultValue()->getState(), ResultState::Ok);
        EXPECT_NE(unit->getResultValue()->getState(), ResultState::Empty);

        unit->clearResult();
        EXPECT_EQ(unit->getResultValue(), nullptr);
        EXPECT_EQ(valueOutChanges, 2);
        unit->clearResult();
        EXPECT_EQ(valueOutChanges, 2) << "an empty unit stays quiet";
    }
}

// A data element that the converter refuses is reported with the unit's own text; the unit keeps what it read
// before, and the reading of the unit and of the tree goes on.
TEST(ResultUnitBaseTest, ParseErrorIsReportedAndReadingGoesOn)
{
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.defaultId);
        ResultTree tree;
        std::vector<std::string> problems;
        loadFromString(tree.root,
                       treeXml(unitXml("Bad", kind.className, "Formula=\"1+1\"", kind.badElement)
                               + unitXml("Next", kind.className, "", kind.goodElement)),
                       makeMode(SerializationMode::User, &problems));
        const std::string element = kind.badElement.substr(1, kind.badElement.find_first_of(" />") - 1);
        EXPECT_EQ(problems, std::vector<std::string>{"Test/Results/Bad: " + kind.defaultId
                                                     + " data parse error: the element " + element
                                                     + " holds no valid result"});

        auto* const badUnit = tree.find<IResultUnit>("Bad");
        ASSERT_NE(badUnit, nullptr);
        EXPECT_EQ(badUnit->getResultValue(), nullptr);
        EXPECT_NE(saveToString(tree.root, makeMode(SerializationMode::User)).find("Formula=\"1+1\""), std::string::npos)
            << "the formula read before the data stays";

        auto* const next = tree.find<IResultUnit>("Next");
        ASSERT_NE(next, nullptr);
        ASSERT_NE(next->getResultValue(), nullptr);
        EXPECT_EQ(next->getResultValue()->getState(), ResultState::Ok);
    }
}

// Only an element as the first child of Value is a result; anything else means no result, and no problem.
TEST(ResultUnitBaseTest, ValueWithoutLeadingElementHoldsNoResult)
{
    for (const Kind& kind : kinds()) {
        for (const std::string& content : {std::string(), "text" + kind.goodElement, "<!-- c -->" + kind.goodElement}) {
            SCOPED_TRACE(kind.defaultId + ": " + content);
            ResultTree tree;
            kind.setFailedResult(*tree.results->add(NodeFactory::create(kind.className)));
            std::vector<std::string> problems;
            loadFromString(tree.root, treeXml(unitXml(kind.defaultId, kind.className, "", content)),
                           makeMode(SerializationMode::User, &problems));
            EXPECT_TRUE(problems.empty());
            auto* const unit = tree.find<IResultUnit>(kind.defaultId);
            ASSERT_NE(unit, nullptr);
            EXPECT_EQ(unit->getResultValue(), nullptr) << "the loaded null replaces the former result";
        }
    }
}
