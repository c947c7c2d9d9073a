// The settings of a test in the HTML report: name, value, measure and formula in both languages, and a setting
// whose formula fails shows its error.

#include "RunnerProcess.h"
#include "TemporaryFolder.h"
#include "containers/ProjectFile.h"
#include "containers/TestContainer.h"
#include "core/tree/Node.h"
#include "core/tree/NodeTreeTraversal.h"
#include "relay/DemoRelay.h"
#include "relay/PickupTest.h"
#include "values/NumericUnit.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <regex>
#include <string>

using ZemDemoTest::hasXsltproc;
using ZemDemoTest::parseCounters;
using ZemDemoTest::readFile;
using ZemDemoTest::writeFile;

namespace {

ZemTree::NumericUnit* settingOf(ZemTree::Node& test, const std::string& id)
{
    return dynamic_cast<ZemTree::NumericUnit*>(test.findChild("Settings")->findChild(id));
}

TEST(ReportSettings, SettingsTableShowsValuesMeasuresFormulasAndErrors)
{
    if (std::system("command -v xsltproc > /dev/null 2>&1") != 0)
        GTEST_SKIP() << "xsltproc is not installed";
    ZemDemo::registerDemoTypes();
    std::unique_ptr<ZemTree::Node> root = ZemDemo::buildSampleProject();
    ZemTree::Node* pickup = nullptr;
    for (ZemTree::Node* node : ZemTree::NodeTreeTraversal(root.get(), false)) {
        if (pickup == nullptr && dynamic_cast<ZemDemo::PickupTest*>(node) != nullptr)
            pickup = node;
    }
    ASSERT_NE(nullptr, pickup);
    ZemTree::NumericUnit* const step = settingOf(*pickup, "Step");
    ZemTree::NumericUnit* const rampEnd = settingOf(*pickup, "RampEnd");
    ASSERT_NE(nullptr, step);
    ASSERT_NE(nullptr, rampEnd);
    step->setFormula("{../RampStart}/180");
    step->setIsFormulaSource(true);
    rampEnd->setFormula("{../RampStart}*");
    rampEnd->setIsFormulaSource(true);
    ASSERT_NE(nullptr, rampEnd->getError());
    const std::string error = rampEnd->getError()->what();

    ZemTreeTest::TemporaryFolder folder;
    ZemTree::ProjectFile().writeReport(*root, folder.path().string());
    const struct {
        const char* language;
        const char* formulaHeader;
        const char* unitHeader;
    } rows[] = {{"en", "Formula", "Unit"}, {"ru", "Формула", "Ед. изм."}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.language);
        const std::string html = folder.file(std::string("report-") + row.language + ".html");
        const std::string command = std::string("xsltproc --nonet --stringparam lang ") + row.language + " -o '" + html
                                    + "' '" ZTR_REPORT_XSL "' '" + folder.file("report.xml") + "'";
        ASSERT_EQ(0, std::system(command.c_str()));
        const std::string text = readFile(html);
        EXPECT_NE(std::string::npos, text.find(std::string("<th>") + row.formulaHeader + "</th>"));
        EXPECT_NE(std::string::npos, text.find(std::string("<th>") + row.unitHeader + "</th>"));
        // The computed step, its measure and its formula on one row; the ramp start as typed.
        EXPECT_TRUE(std::regex_search(text, std::regex("<td>0.5</td>\\s*<td>%</td>\\s*<td><code>\\{../RampStart\\}/180"
                                                       "</code></td>")));
        EXPECT_TRUE(std::regex_search(text, std::regex("<td>90</td>\\s*<td>%</td>\\s*<td></td>")));
        EXPECT_NE(std::string::npos, text.find(error));
    }
}

} // namespace
