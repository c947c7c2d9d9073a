#include "TemporaryFolder.h"
#include "containers/ProjectFile.h"
#include "containers/TestableContainer.h"
#include "core/tree/Node.h"
#include "core/tree/NodePathHelper.h"
#include "evaluation/ITestContainer.h"
#include "relay/DemoRelay.h"
#include "relay/RelayTestBase.h"
#include "values/Unit.h"

#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <vector>

using namespace ZemDemo;

namespace {

const char* const pickupPath = "Substation/Collection/Overcurrent/Tests/Pickup";
const char* const tripTimePath = "Substation/Collection/Overcurrent/Tests/TripTime";
const char* const zonePath = "Substation/Collection/Distance/Tests/Zone1";
const char* const contactPath = "Substation/Collection/Contacts/Tests/Follower";

ZemTree::Node* nodeAt(ZemTree::Node* root, const std::string& path)
{
    // Paths here start with the root's own id.
    const std::string below = path.substr(path.find('/') + 1);
    return ZemTree::NodePathHelper::getTarget(root, below);
}

ZemTree::Unit<double>* settingOf(ZemTree::Node* root, const std::string& testPath, const std::string& id)
{
    return dynamic_cast<ZemTree::Unit<double>*>(nodeAt(root, testPath + "/Settings/" + id));
}

std::function<void(ZemTree::Node*)> data(const char* test, const char* setting, double value)
{
    return [=](ZemTree::Node* root) { settingOf(root, test, setting)->setData(value); };
}

std::function<void(ZemTree::Node*)> formula(const char* test, const char* setting, const char* text)
{
    return [=](ZemTree::Node* root) {
        ZemTree::Unit<double>* const unit = settingOf(root, test, setting);
        unit->setFormula(text);
        unit->setIsFormulaSource(true);
    };
}

} // namespace

// The limits of each example test's settings, at and beyond their edges, and the one text of a number that is not
// finite whether data or a formula gave it; the sample's own settings and sound edits pass. The runner's tables
// drive the settings that would hang a run or pass falsely end to end.
TEST(SettingChecksTest, RefusesSettingsThatWouldHangOrPassFalselyByNameAndLimit)
{
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char* text;
        std::function<void(ZemTree::Node*)> edit;
        const char* test;
        // Empty: no problem expected.
        std::string problem;
    } rows[] = {
        {"sample", [](ZemTree::Node*) {}, pickupPath, ""},
        {"fine step", data(pickupPath, "Step", 0.01), pickupPath, ""},
        {"zero step", data(pickupPath, "Step", 0.0), pickupPath, "Setting Step is 0 %; it must be above 0 %"},
        {"ramp end below start", data(pickupPath, "RampEnd", 80.0), pickupPath,
         "Setting RampEnd is 80 %; it must be above RampStart, 90 %"},
        {"tolerance -inf data", data(pickupPath, "Tolerance", -inf), pickupPath,
         "Setting Tolerance is not a finite number: -inf"},
        {"tolerance negative", data(pickupPath, "Tolerance", -1.0), pickupPath,
         "Setting Tolerance is -1 %; the limits are 0 to 100 %"},
        {"broken formula", formula(pickupPath, "Step", "2 * * 3"), pickupPath, "Setting Step: Unexpected '*'"},
        {"absolute tolerance nan", data(tripTimePath, "AbsoluteTolerance", nan), tripTimePath,
         "Setting AbsoluteTolerance is not a finite number: nan"},
        {"zone steps 1", data(zonePath, "Steps", 1.0), zonePath, ""},
        {"repetitions 0", data(contactPath, "Repetitions", 0.0), contactPath,
         "Setting Repetitions is 0; the limits are 1 to 100"},
        {"time-out 100 s", data(contactPath, "Timeout", 100.0), contactPath,
         "Setting Timeout is 100 s; the limits are 0.001 to 10 s"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const std::unique_ptr<ZemTree::Node> root = buildSampleProject();
        row.edit(root.get());
        const std::vector<std::string> problems = findSettingProblems(root.get(), RelaySettings());
        if (row.problem.empty()) {
            EXPECT_TRUE(problems.empty()) << problems.front();
            continue;
        }
        ASSERT_EQ(1u, problems.size());
        EXPECT_EQ(0u, problems.front().rfind(std::string(row.test) + ": " + row.problem, 0)) << problems.front();
    }
}

// A cycle of formulas through three settings gives each of them the cycle error; the test refuses, and --check's
// list names every unit by its path.
TEST(SettingChecksTest, CycleOfThreeSettingsIsAnErrorOfEachOfThem)
{
    const std::unique_ptr<ZemTree::Node> root = buildSampleProject();
    formula(pickupPath, "Tolerance", "{../Step}*2")(root.get());
    formula(pickupPath, "Step", "{../RampStart}/100")(root.get());
    formula(pickupPath, "RampStart", "{../Tolerance}*10")(root.get());

    const std::vector<std::string> errors = findValueErrors(root.get());
    ASSERT_EQ(3u, errors.size());
    for (const char* unit : {"Tolerance", "Step", "RampStart"}) {
        SCOPED_TRACE(unit);
        const std::string prefix = std::string(pickupPath) + "/Settings/" + unit + ": Circular reference";
        bool isListed = false;
        for (const std::string& error : errors)
            isListed = isListed || error.rfind(prefix, 0) == 0;
        EXPECT_TRUE(isListed);
    }
    EXPECT_FALSE(findSettingProblems(root.get(), RelaySettings()).empty());
    // Without value errors the checks stay quiet: the list of value errors already has them.
    EXPECT_TRUE(findSettingProblems(root.get(), RelaySettings(), false).empty());
}

TEST(SettingChecksTest, TestPathsSelectWholeSegments)
{
    const std::unique_ptr<ZemTree::Node> root = buildSampleProject();
    const struct {
        std::vector<std::string> filters;
        std::size_t selected;
        std::vector<std::string> unmatched;
    } rows[] = {
        {{}, 4, {}},
        {{"Substation/Collection/Overcurrent"}, 2, {}},
        {{"Substation/Collection/Overcurrent/"}, 2, {}},
        {{"Substation/Collection/Overcurrent/Tests/Pick"}, 0, {"Substation/Collection/Overcurrent/Tests/Pick"}},
        {{"Substation/Collection/Over"}, 0, {"Substation/Collection/Over"}},
        {{pickupPath, zonePath}, 2, {}},
        {{pickupPath, "Substation/Nowhere"}, 1, {"Substation/Nowhere"}},
        {{"Substation"}, 4, {}},
    };
    for (const auto& row : rows) {
        std::string text;
        for (const std::string& filter : row.filters)
            text += filter + " ";
        SCOPED_TRACE(text);
        std::vector<std::string> unmatched;
        EXPECT_EQ(row.selected, collectChosenTests(root.get(), row.filters, &unmatched).size());
        EXPECT_EQ(row.unmatched, unmatched);
    }
}

// The points a cut-short run did not measure survive a save and a load, so a reloaded project does not pass
// what was never measured; a count that cannot be read is a problem and still not a pass.
TEST(SettingChecksTest, NotTestedPointsSurviveSaveAndLoad)
{
    ZemTreeTest::TemporaryFolder folder;
    ZemTree::ProjectFile file;
    {
        const std::unique_ptr<ZemTree::Node> root = buildSampleProject();
        file.save(*root, folder.file("sample.xml"));
    }
    const std::string sample = [&] {
        std::ifstream stream(folder.file("sample.xml"));
        return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }();
    const std::string pickupElement = "<Node Id=\"Pickup\" Class=\"ZemDemo::PickupTest\"";
    ASSERT_NE(std::string::npos, sample.find(pickupElement));

    const struct {
        const char* text;
        const char* attributes;
        unsigned notTested;
        bool isProblem;
    } rows[] = {
        {"two points missing", " NotTestedPoints=\"2\" Stopped=\"true\"", 2, false},
        {"none missing", "", 0, false},
        {"unreadable count", " NotTestedPoints=\"many\"", 1, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        std::string edited = sample;
        edited.insert(edited.find(pickupElement) + pickupElement.size(), row.attributes);
        folder.write("edited.xml", edited);
        ZemTree::ProjectFile reader;
        const std::unique_ptr<ZemTree::Node> root = reader.load(folder.file("edited.xml"));
        EXPECT_EQ(row.isProblem, !reader.getProblems().empty());
        auto* pickup = dynamic_cast<RelayTestBase*>(nodeAt(root.get(), pickupPath));
        ASSERT_NE(nullptr, pickup);
        EXPECT_EQ(row.notTested, pickup->getNotTestedPoints());

        reader.save(*root, folder.file("again.xml"));
        ZemTree::ProjectFile again;
        const std::unique_ptr<ZemTree::Node> reloaded = again.load(folder.file("again.xml"));
        EXPECT_EQ(row.notTested,
                  dynamic_cast<RelayTestBase*>(nodeAt(reloaded.get(), pickupPath))->getNotTestedPoints());
    }
}
