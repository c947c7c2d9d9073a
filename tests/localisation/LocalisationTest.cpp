#include "core/tree/TreeLocalization.h"
#include "localisation/TreePresentersLocalization.h"
#include "localisation/TreeRelay.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using ZemTree::TreePresentersLocalization;

class LocalisationTest : public ::testing::Test {
protected:
    void TearDown() override { lng::language = _savedLanguage; }

private:
    const int _savedLanguage = lng::language;
};

// Every key the library asks for, with the lookup that serves it. A key missing from a table comes back as
// itself, which is what the check catches.
TEST_F(LocalisationTest, EveryKeyHasItsOwnTextInBothLanguages)
{
    struct Row {
        std::string key;
        std::function<std::string(const std::string&)> text;
    };
    const auto tree = [](const std::string& key) { return std::string(lng::Tree::get(key)); };
    const auto relay = [](const std::string& key) { return std::string(lng::TreeRelay::get(key)); };
    std::vector<Row> rows;
    for (const char* key : {"error.ReadOnly",
                            "Units.zemolIn",
                            "Units.zemolOut",
                            "Units.zemolOutCollection",
                            "Units.analogOutputRedirect",
                            "Properties.Measure",
                            "normalOpenShort",
                            "normalClosedShort",
                            "InContactMode.Off",
                            "InContactMode.NoLoad",
                            "InContactMode.SC",
                            "InContactMode.Pause",
                            "InContactMode.RPO",
                            "InContactMode.RPV",
                            "Hardware.binaryInputs",
                            "Hardware.binaryOutputs",
                            "Hardware.analogOutputs",
                            "Hardware.group",
                            "Hardware.input",
                            "Hardware.output",
                            "Flag.yes",
                            "Flag.no",
                            "Graph.upperToleranceLimit",
                            "Graph.lowerToleranceLimit",
                            "Graph.outerZoneBound",
                            "Graph.innerZoneBound"}) {
        rows.push_back({key, tree});
    }
    for (const char* key :
         {"result_ok", "result_notOk", "result_empty", "result_error", "testQueue_testRunning", "testQueue_finished",
          "object", "elements", "table", "Properties.channelType", "Properties.enableState", "Properties.count",
          "Actions.before", "Actions.start", "Actions.after", "Group.actions", "ResultGraph.showHideTable",
          "ResultGraph.showHideGraph", "ResultGraph.showHideAll"}) {
        rows.push_back({key, relay});
    }
    const auto array = [](const char* const* texts) {
        return [texts](const std::string&) { return std::string(texts[lng::language]); };
    };
    rows.push_back({"ContactCollectionEditor_title", array(TreePresentersLocalization::ContactCollectionEditor_title)});
    rows.push_back({"formulaEditorWindowTitle", array(TreePresentersLocalization::formulaEditorWindowTitle)});
    rows.push_back({"formulaSource", array(TreePresentersLocalization::formulaSource)});
    rows.push_back({"resetValue", array(TreePresentersLocalization::resetValue)});
    rows.push_back({"add", array(TreePresentersLocalization::add)});
    rows.push_back({"edit", array(TreePresentersLocalization::edit)});
    rows.push_back({"inContact_Number", array(TreePresentersLocalization::inContact_Number)});
    rows.push_back({"inContact_Mode", array(TreePresentersLocalization::inContact_Mode)});
    rows.push_back({"inContact_Start", array(TreePresentersLocalization::inContact_Start)});
    rows.push_back({"inContact_Duration", array(TreePresentersLocalization::inContact_Duration)});

    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        for (int language : {0, 1}) {
            lng::language = language;
            const std::string text = row.text(row.key);
            EXPECT_FALSE(text.empty()) << "language " << language;
            EXPECT_NE(text, row.key) << "language " << language;
        }
    }
}

TEST_F(LocalisationTest, UnknownKeysComeBackAsTheKeyItself)
{
    // Keys are case-sensitive and not trimmed.
    for (const std::string key : {"", "Result_ok", "result_ok ", "error.readonly"}) {
        for (int language : {0, 1}) {
            SCOPED_TRACE("\"" + key + "\" in language " + std::to_string(language));
            lng::language = language;
            EXPECT_EQ(std::string(lng::TreeRelay::get(key)), key);
            EXPECT_EQ(std::string(lng::Tree::get(key)), key);
        }
    }
}

} // namespace
