#include "LanguageGuard.h"
#include "core/tree/Measures.h"
#include "core/tree/RangeStructure.h"
#include "core/tree/ToleranceReduced.h"
#include "presentation/presenters/ResultMultiGraphUnitControlPresenter.h"
#include "presentation/presenters/ResultMultiGraphUnitPresenter.h"
#include "presentation/presenters/ResultMultiNumericUnitPresenter.h"
#include "presentation/presenters/ResultMultiStringUnitPresenter.h"
#include "presentation/support/MainLoopPump.h"
#include "presentation/widgets/SharedSizeGroupOwner.h"
#include "presentation/widgets/WidgetSupport.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/ResultMultiNumeric.h"
#include "results/ResultMultiNumericUnit.h"
#include "results/ResultMultiString.h"
#include "results/ResultMultiStringUnit.h"
#include "results/StringSettingAssessment.h"
#include "results/graph/ResultMultiGraph.h"

#include <glib.h>
#include <gtkmm/box.h>
#include <gtkmm/window.h>

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

using namespace PresentationTest;

namespace {

using Measurments = std::map<std::string, std::vector<std::string>>;

std::shared_ptr<ZemTree::NumericSettingAssessment> setting(double value, double tolerance)
{
    return std::make_shared<ZemTree::NumericSettingAssessment>(
        value, std::make_shared<ZemTree::ToleranceReduced>(Zem::Nullable<ZemTree::RangeStructure>(),
                                                           ZemTree::RangeStructure::Standart(-tolerance, tolerance)));
}

// A column of result units as a test shows them: currents per phase, a trip time, an untested unit, contact
// states. Built in the language current at construction.
struct ResultColumn {
    ResultColumn()
        : currents("Currents", ZemTree::LocalString::create("Pickup current", "Ток срабатывания"),
                   ZemTree::LocalString::Empty(),
                   std::make_shared<ZemTree::ResultMultiNumeric>(
                       Measurments{{"Ia", {"1.02"}}, {"Ib", {"0.98"}}, {"Ic", {"1.31"}}}, setting(1.0, 0.05)),
                   ZemTree::Measures::Ampere()),
          time("Time", ZemTree::LocalString::create("Trip time", "Время срабатывания"), ZemTree::LocalString::Empty(),
               std::make_shared<ZemTree::ResultMultiNumeric>(Measurments{{"t", {"0.512"}}}, setting(0.5, 0.025)),
               ZemTree::Measures::Second()),
          untested("Untested", ZemTree::LocalString::create("Reset ratio", "Коэффициент возврата"),
                   ZemTree::LocalString::Empty(), nullptr, ZemTree::Measures::None()),
          curve("Curve", ZemTree::LocalString::create("Time characteristic", "Времятоковая характеристика"),
                ZemTree::LocalString::Empty(),
                std::make_shared<ZemTree::ResultMultiGraph>(
                    std::map<std::string, std::vector<Zem::Point>>{{"phase A", {{1.0, 1.0}, {2.0, 1.5}}}}, nullptr)),
          contacts("Contacts", ZemTree::LocalString::create("Contacts", "Контакты"), ZemTree::LocalString::Empty(),
                   std::make_shared<ZemTree::ResultMultiString>(
                       Measurments{{"K1", {"closed"}}, {"K2", {"open"}}},
                       std::make_shared<ZemTree::StringSettingAssessment>("closed"))),
          currentsRows(&currents), timeRows(&time), untestedRows(&untested), curveRows(&curve), contactRows(&contacts)
    {
        loadStudioTheme();
        for (Zem::IPresenter* presenter : std::vector<Zem::IPresenter*>{&currentsRows, &timeRows, &untestedRows,
                                                                        &curveRows, &contactRows, &curveSwitches})
            column.pack_start(*dynamic_cast<Gtk::Widget*>(presenter->getView()), Gtk::PACK_SHRINK);
        column.set_border_width(6);
        window.add(column);
        window.show_all();
    }

    ~ResultColumn()
    {
        column.foreach ([this](Gtk::Widget& child) { column.remove(child); });
    }

    ZemTree::ResultMultiNumericUnit currents;
    ZemTree::ResultMultiNumericUnit time;
    ZemTree::ResultMultiNumericUnit untested;
    ZemTree::ResultMultiGraphUnit curve;
    ZemTree::ResultMultiStringUnit contacts;
    ZemTree::ResultMultiNumericUnitPresenter currentsRows;
    ZemTree::ResultMultiNumericUnitPresenter timeRows;
    ZemTree::ResultMultiNumericUnitPresenter untestedRows;
    ZemTree::ResultMultiGraphUnitPresenter curveRows;
    ZemTree::ResultMultiStringUnitPresenter contactRows;
    ZemTree::ResultMultiGraphUnitControlPresenter curveSwitches{&curve};
    Gtk::Box column{Gtk::ORIENTATION_VERTICAL, 0};
    Gtk::Window window;
};

// Main loop idle and the window laid out: a width change of a column re-queues its cells from an idle step, and
// their new layout waits for the frame clock, so lay out at once until nothing more is queued.
bool settle(Gtk::Window& window)
{
    for (int round = 0; round < 10; ++round) {
        if (!pumpUntilIdle())
            return false;
        window.check_resize();
        if (!g_main_context_pending(nullptr))
            return true;
    }
    return false;
}

void collectOwners(Gtk::Widget& widget, std::map<std::string, std::vector<Zem::SharedSizeGroupOwner*>>& owners)
{
    if (auto* const owner = dynamic_cast<Zem::SharedSizeGroupOwner*>(&widget))
        owners[owner->getKey()].push_back(owner);
    if (auto* const container = dynamic_cast<Gtk::Container*>(&widget)) {
        for (Gtk::Widget* child : container->get_children())
            collectOwners(*child, owners);
    }
}

TEST(ResultRowsThemeTest, EveryStyleClassHasARuleAndColumnsAlignAcrossUnits)
{
    ZemTreeTest::LanguageGuard language(0);
    ResultColumn rows;
    ASSERT_TRUE(settle(rows.window));
    const std::set<std::string> theme = getThemeClasses();
    const std::set<std::string> used = collectOwnStyleClasses(rows.window);
    for (const char* expected : {"ResultNumeric",
                                 "ResultString",
                                 "ResultMultiNumericItem",
                                 "ResultMultiStringItem",
                                 "ResultMultiNumeric",
                                 "ResultMultiString",
                                 "ResultMultiNumericUnitView",
                                 "ResultMultiStringUnitView",
                                 "ResultDataCell",
                                 "standartSize",
                                 "DefaultControlBorder",
                                 "SharedGroup",
                                 "textAreaPadding",
                                 "ResultStateView",
                                 "ResultStateOk",
                                 "ResultStateNotOk",
                                 "ResultStateNotTested",
                                 "ResultMultiGraphUnitView",
                                 "InheritControl",
                                 "ResultMultiGraphStateView",
                                 "ResultMultiGraphStateItemView",
                                 "ResultMultiGraphUnitControlView",
                                 "rightMarginM1",
                                 "editable",
                                 "ZemTreeControlNone",
                                 "innerContentSmallMargin",
                                 "GraphImage",
                                 "TableImage",
                                 "EyeImage"}) {
        EXPECT_EQ(used.count(expected), 1u) << expected << " was not found in the widget tree";
    }
    for (const std::string& name : used) {
        SCOPED_TRACE(name);
        EXPECT_EQ(theme.count(name), 1u) << "the style class has no rule in the studio's theme";
    }

    std::map<std::string, std::vector<Zem::SharedSizeGroupOwner*>> owners;
    // The graph unit stands in the value column of its record and stretches its key, so it is left out here.
    for (Zem::IPresenter* presenter :
         std::vector<Zem::IPresenter*>{&rows.currentsRows, &rows.timeRows, &rows.untestedRows, &rows.contactRows})
        collectOwners(*dynamic_cast<Gtk::Widget*>(presenter->getView()), owners);
    for (const char* key : {"ssgResultKey", "ssgResultSetting", "ssgResultMeasurment", "ssgResultMeasurmentRes",
                            "ssgResultDeviation", "ssgResultState", "ssgResultUnit", "ssgMeasure"}) {
        SCOPED_TRACE(key);
        const auto& cells = owners[key];
        ASSERT_GE(cells.size(), 2u);
        for (const auto* cell : cells)
            EXPECT_EQ(cell->get_allocated_width(), cells[0]->get_allocated_width());
    }
    // String rows have no deviation: their measurement cell spans value and deviation of the numeric rows.
    int x = 0;
    int y = 0;
    int stringX = 0;
    ASSERT_TRUE(owners["ssgResultState"].front()->translate_coordinates(rows.window, 0, 0, x, y));
    ASSERT_TRUE(owners["ssgResultState"].back()->translate_coordinates(rows.window, 0, 0, stringX, y));
    EXPECT_EQ(stringX, x);
}

TEST(ResultRowsThemeTest, PicturesInBothLanguages)
{
    for (int language : {0, 1}) {
        SCOPED_TRACE(language);
        ZemTreeTest::LanguageGuard guard(language);
        ResultColumn rows;
        ASSERT_TRUE(settle(rows.window));
        ASSERT_TRUE(rows.window.get_mapped());
        const auto picture = takePicture(rows.window, language == 0 ? "result-rows-en" : "result-rows-ru");
        EXPECT_GE(countColours(picture, 16), 16) << "the picture is blank or nearly so";
    }
}

} // namespace
