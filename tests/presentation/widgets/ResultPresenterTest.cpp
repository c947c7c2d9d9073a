#include "LanguageGuard.h"
#include "core/tree/Measure.h"
#include "core/tree/MeasureObject.h"
#include "core/tree/MeasureProperty.h"
#include "core/tree/Measures.h"
#include "core/tree/RangeStructure.h"
#include "core/tree/ToleranceReduced.h"
#include "localisation/TreeRelay.h"
#include "presentation/presenters/ResultMultiGraphStatePresenter.h"
#include "presentation/presenters/ResultMultiGraphUnitPresenter.h"
#include "presentation/presenters/ResultMultiNumericPresenter.h"
#include "presentation/presenters/ResultMultiNumericUnitPresenter.h"
#include "presentation/presenters/ResultMultiStringPresenter.h"
#include "presentation/presenters/ResultNumericPresenter.h"
#include "presentation/presenters/ResultStatePresenter.h"
#include "presentation/presenters/ResultStringPresenter.h"
#include "presentation/support/MainLoopPump.h"
#include "presentation/widgets/ResultStateView.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/ResultMultiNumeric.h"
#include "results/ResultMultiNumericUnit.h"
#include "results/ResultMultiString.h"
#include "results/StringSettingAssessment.h"
#include "results/graph/ResultMultiGraph.h"

#include <gtkmm/container.h>
#include <gtkmm/label.h>
#include <gtkmm/window.h>

#include <atomic>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace PresentationTest;
using ZemTree::ResultNumeric;
using ZemTree::ResultString;

namespace {

// Setting 2 with an absolute tolerance of ±1.
std::shared_ptr<ZemTree::NumericSettingAssessment> settingTwo()
{
    return std::make_shared<ZemTree::NumericSettingAssessment>(
        2.0, std::make_shared<ZemTree::ToleranceReduced>(Zem::Nullable<ZemTree::RangeStructure>(),
                                                         ZemTree::RangeStructure::Standart(-1.0, 1.0)));
}

// The texts of all labels under `widget`, in tree order, joined by "|".
std::string labelTexts(Gtk::Widget* widget)
{
    if (auto* const label = dynamic_cast<Gtk::Label*>(widget))
        return label->get_text();
    std::string text;
    if (auto* const container = dynamic_cast<Gtk::Container*>(widget)) {
        for (Gtk::Widget* child : container->get_children()) {
            const std::string part = labelTexts(child);
            if (part.empty())
                continue;
            if (!text.empty())
                text += "|";
            text += part;
        }
    }
    return text;
}

std::string labelTexts(Zem::IView* view)
{
    return labelTexts(dynamic_cast<Gtk::Widget*>(view));
}

// Records what a numeric presenter hands its row.
class FakeNumericView : public ZemTree::IResultNumericView {
public:
    void fill(Zem::IView* setting_, Zem::IView* measurement_, Zem::IView* deviation_, Zem::IView* state_) override
    {
        setting = labelTexts(setting_);
        measurement = labelTexts(measurement_);
        deviation = labelTexts(deviation_);
        state = dynamic_cast<Zem::ResultStateView*>(state_);
        ++fillCount;
    }

    std::string setting;
    std::string measurement;
    std::string deviation;
    Zem::ResultStateView* state = nullptr;
    int fillCount = 0;
};

class FakeNumericPresenter : public ZemTree::ResultNumericPresenter {
public:
    using ZemTree::ResultNumericPresenter::ResultNumericPresenter;
    FakeNumericView* fake = nullptr;

protected:
    std::unique_ptr<ZemTree::IResultNumericView> _createDefaultView() override
    {
        auto view = std::make_unique<FakeNumericView>();
        fake = view.get();
        return view;
    }
};

std::string stateText(Zem::ResultStateView* view)
{
    return view ? std::string(view->get_text()) : std::string("<no view>");
}

TEST(ResultPresenterTest, NumericTextsWithDashForEmptyCells)
{
    ZemTreeTest::LanguageGuard language(0);
    const ResultNumeric accepted({"2.5"}, settingTwo());
    const ResultNumeric reference({"7"}, nullptr);
    const ResultNumeric untested;
    struct Row {
        const char* name;
        const ResultNumeric* result;
        bool hasSetting;
        bool hasMeasurement;
        bool hasDeviation;
        const char* state;
    };
    const Row rows[] = {
        {"with a setting", &accepted, true, true, true, "ok"},
        {"reference reading without assessment", &reference, false, true, false, "ok"},
        {"not measured", &untested, false, false, false, "not tested"},
        {"no result at all", nullptr, false, false, false, "not tested"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        FakeNumericPresenter presenter(row.result);
        presenter.getView();
        ASSERT_NE(presenter.fake, nullptr);
        EXPECT_EQ(presenter.fake->fillCount, 1);
        if (row.hasSetting)
            EXPECT_EQ(presenter.fake->setting, row.result->getAssessment()->getDisplayValue());
        else
            EXPECT_EQ(presenter.fake->setting, "-");
        if (row.hasMeasurement)
            EXPECT_EQ(presenter.fake->measurement, row.result->getMeasurmentDisplayValue());
        else
            EXPECT_EQ(presenter.fake->measurement, "-");
        if (row.hasDeviation)
            EXPECT_EQ(presenter.fake->deviation, row.result->getDeviation().getDisplayValue());
        else
            EXPECT_EQ(presenter.fake->deviation, "-");
        EXPECT_NE(presenter.fake->setting, "");
        EXPECT_EQ(stateText(presenter.fake->state), row.state);
    }
}

TEST(ResultPresenterTest, StateCellLineFeedRuleAndVerdictClass)
{
    ZemTreeTest::LanguageGuard language(0);
    // A text that is no number is an error whose message is that text.
    const ResultNumeric twoLines({"broken wire\nchannel 3 gave no samples"}, nullptr);
    const ResultNumeric endingLineFeed({"broken wire\n"}, nullptr);
    const ResultNumeric rejected({"5"}, settingTwo());
    const ResultNumeric accepted({"2"}, settingTwo());
    const ResultNumeric untested;
    struct Row {
        const char* name;
        const ResultNumeric* result;
        const char* text;
        const char* tooltip;
        const char* verdictClass;
    };
    const Row rows[] = {
        {"two lines: first in the cell, whole as tooltip", &twoLines, "broken wire",
         "broken wire\nchannel 3 gave no samples", Zem::ResultStateView::notOkClass},
        {"only line feed at the end: whole text, no tooltip", &endingLineFeed, "broken wire\n", "",
         Zem::ResultStateView::notOkClass},
        {"rejected", &rejected, "?not ok", "", Zem::ResultStateView::notOkClass},
        {"accepted", &accepted, "ok", "", Zem::ResultStateView::okClass},
        {"not tested", &untested, "not tested", "", Zem::ResultStateView::notTestedClass},
        {"null", nullptr, lng::TreeRelay::get("result_empty"), "", Zem::ResultStateView::notTestedClass},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ZemTree::ResultStatePresenter presenter(row.result);
        auto* const view = dynamic_cast<Zem::ResultStateView*>(presenter.getView());
        ASSERT_NE(view, nullptr);
        EXPECT_EQ(view->get_text(), row.text);
        EXPECT_EQ(view->get_tooltip_text(), row.tooltip);
        EXPECT_TRUE(view->get_style_context()->has_class(row.verdictClass));
    }
}

TEST(ResultPresenterTest, StringTextsAndVerdict)
{
    ZemTreeTest::LanguageGuard language(0);
    const auto closed = std::make_shared<ZemTree::StringSettingAssessment>("closed");
    const ResultString wrong({"open"}, closed);
    const ResultString right({"closed"}, closed);
    const ResultString free({"open"}, nullptr);
    struct Row {
        const char* name;
        const ResultString* result;
        const char* texts;
    };
    const Row rows[] = {
        {"rejected", &wrong, "closed|open|?not ok"},
        {"accepted", &right, "closed|closed|ok"},
        {"no assessment", &free, "-|open|ok"},
        {"null", nullptr, "-|-|not tested"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ZemTree::ResultStringPresenter presenter(row.result);
        EXPECT_EQ(labelTexts(presenter.getView()), row.texts);
    }
}

TEST(ResultPresenterTest, MultiResultRowsAndTheSingleRowOfAnEmptyOne)
{
    ZemTreeTest::LanguageGuard language(0);
    // Key, setting, measurement, deviation, state.
    const std::string emptyRow = "-|-|-|-|not tested";
    const ZemTree::ResultMultiNumeric nothing;
    const ZemTree::ResultMultiNumeric two(std::map<std::string, std::vector<std::string>>{{"Ib", {"5"}}, {"Ia", {"2"}}},
                                          settingTwo());
    const std::string setting = settingTwo()->getDisplayValue();
    struct Row {
        const char* name;
        const ZemTree::ResultMultiNumeric* result;
        std::vector<std::string> keys;
    };
    const Row rows[] = {
        {"null", nullptr, {"-"}},
        {"no items", &nothing, {"-"}},
        {"two items in key order", &two, {"Ia", "Ib"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ZemTree::ResultMultiNumericPresenter presenter(nullptr);
        presenter.getView();
        // Built while shown, as a new output is.
        presenter.setResult(row.result);
        const std::vector<Zem::IPresenter*> items = presenter.getItems();
        ASSERT_EQ(items.size(), row.keys.size());
        auto* const box = dynamic_cast<Gtk::Container*>(presenter.getView());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->get_children().size(), row.keys.size());
        for (std::size_t i = 0; i < items.size(); ++i) {
            const std::string texts = labelTexts(items[i]->getView());
            EXPECT_EQ(texts.substr(0, texts.find('|')), row.keys[i]);
            if (row.keys[i] == "-")
                EXPECT_EQ(texts, emptyRow);
            else
                EXPECT_EQ(texts.substr(0, row.keys[i].size() + 1 + setting.size()), row.keys[i] + "|" + setting);
        }
    }
    ZemTree::ResultMultiStringPresenter strings(nullptr);
    EXPECT_EQ(labelTexts(strings.getView()), "-|-|-|not tested");
}

TEST(ResultPresenterTest, UnitMeasureFollowsItsPropertyAndQueuedRebuildsOutliveNothing)
{
    ZemTreeTest::LanguageGuard language(0);
    ZemTree::ResultMultiNumericUnit unit("Voltage", ZemTree::LocalString("Voltage"), ZemTree::LocalString::Empty(),
                                         nullptr, ZemTree::Measures::Ampere());
    {
        ZemTree::ResultMultiNumericUnitPresenter presenter(&unit);
        const std::string rowTexts = "-|-|-|-|not tested";
        struct Row {
            const char* name;
            ZemTree::Measure* measure;
        };
        const Row rows[] = {
            {"volt", ZemTree::Measures::Volt()},
            {"none", ZemTree::Measures::None()},
            {"second", ZemTree::Measures::Second()},
        };
        for (const Row& row : rows) {
            SCOPED_TRACE(row.name);
            unit.getMeasureData()->getMeasure()->setValue(row.measure);
            const std::string description = row.measure->getDescription();
            EXPECT_EQ(labelTexts(presenter.getView()), description.empty() ? rowTexts : rowTexts + "|" + description);
        }
        // A new output queues a rebuild; the presenter goes before it runs.
        unit.setData(std::make_shared<ZemTree::ResultMultiNumeric>(
            std::map<std::string, std::vector<std::string>>{{"Ua", {"1"}}}, nullptr));
    }
    EXPECT_TRUE(pumpUntilIdle());
    unit.setData(nullptr);
    EXPECT_TRUE(pumpUntilIdle());
}

TEST(ResultPresenterTest, GraphUnitShowsOneVerdictRowPerCurveAndFollowsNewOutputs)
{
    ZemTreeTest::LanguageGuard language(0);
    using Curves = std::map<std::string, std::vector<Zem::Point>>;
    const auto twoCurves = std::make_shared<ZemTree::ResultMultiGraph>(
        Curves{{"phase B", {{1.0, 2.0}}}, {"phase A", {{1.0, 1.0}, {2.0, 1.5}}}}, nullptr);
    const auto noCurves = std::make_shared<ZemTree::ResultMultiGraph>();
    // The first line of each curve's verdict, after its key.
    const auto expected = [](const ZemTree::ResultMultiGraph& result) {
        std::string texts;
        for (const auto& item : result._items) {
            std::string text;
            std::string tooltip;
            ZemTree::ResultStatePresenter::splitDescription(item.second.getStateDescription(), text, tooltip);
            texts += (texts.empty() ? "" : "|") + item.first + "|" + text;
        }
        return texts;
    };
    struct Row {
        const char* name;
        std::shared_ptr<ZemTree::ResultMultiGraph> output;
        std::string texts;
    };
    const Row rows[] = {
        {"null", nullptr, "-|not tested"},
        {"no curves", noCurves, "-|not tested"},
        {"two curves in key order", twoCurves, expected(*twoCurves)},
    };
    ZemTree::ResultMultiGraphUnit unit("Curve", ZemTree::LocalString("Curve"), ZemTree::LocalString::Empty(), nullptr);
    ZemTree::ResultMultiGraphUnitPresenter presenter(&unit);
    EXPECT_EQ(labelTexts(presenter.getView()), "-|not tested");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        unit.setData(row.output);
        ASSERT_TRUE(pumpUntilIdle());
        EXPECT_EQ(labelTexts(presenter.getView()), row.texts);
        ASSERT_NE(presenter.getStatePresenter(), nullptr);
        const std::size_t count = row.output && !row.output->_items.empty() ? row.output->_items.size() : 1;
        EXPECT_EQ(presenter.getStatePresenter()->getItems().size(), count);
    }
    EXPECT_EQ(expected(*twoCurves).rfind("phase A|", 0), 0u);
}

// A worker sets new outputs while the unit is shown: every rebuild runs on the GUI thread, bursts collapse into
// a few rebuilds, and the last output is what stays shown.
TEST(ResultUnitThreadTest, WorkerOutputsCollapseIntoFewRebuilds)
{
    ZemTreeTest::LanguageGuard language(0);
    ZemTree::ResultMultiNumericUnit unit("Currents", ZemTree::LocalString("Currents"), ZemTree::LocalString::Empty(),
                                         nullptr, ZemTree::Measures::Ampere());
    ZemTree::ResultMultiNumericUnitPresenter presenter(&unit);
    Gtk::Window window;
    window.add(*dynamic_cast<Gtk::Widget*>(presenter.getView()));
    window.show_all();
    EXPECT_EQ(labelTexts(presenter.getView()), "-|-|-|-|not tested|" + ZemTree::Measures::Ampere()->getDescription());

    auto* const rows = dynamic_cast<Gtk::Container*>(presenter.getResultPresenter().getView());
    ASSERT_NE(rows, nullptr);
    int added = 0;
    rows->signal_add().connect([&added](Gtk::Widget*) { ++added; });
    const std::thread::id guiThread = std::this_thread::get_id();
    std::atomic<bool> isOffThread{false};
    rows->signal_add().connect([&](Gtk::Widget*) {
        if (std::this_thread::get_id() != guiThread)
            isOffThread = true;
    });

    constexpr int resultCount = 200;
    std::atomic<bool> isDone{false};
    std::thread worker([&] {
        for (int i = 0; i < resultCount; ++i) {
            unit.setData(std::make_shared<ZemTree::ResultMultiNumeric>(
                std::map<std::string, std::vector<std::string>>{{"I" + std::to_string(i), {std::to_string(i)}}},
                nullptr));
        }
        isDone = true;
    });
    const bool isPumped = pumpUntil([&] { return isDone.load(); });
    worker.join();
    ASSERT_TRUE(isPumped);
    ASSERT_TRUE(pumpUntilIdle());

    EXPECT_FALSE(isOffThread.load());
    EXPECT_GE(added, 1);
    EXPECT_LT(added, resultCount / 4) << "every output rebuilt the rows";
    const std::string last = "I" + std::to_string(resultCount - 1);
    EXPECT_EQ(labelTexts(presenter.getView()).substr(0, last.size() + 2), last + "|-");
    window.remove();
}

} // namespace
