// The value frame on a real display: tooltip and error, the formula look, the menu in both languages, and the
// deferred focus that decides the edit mode.

#include "presentation/views/ValueView.h"

#include "LanguageGuard.h"
#include "presentation/support/MainLoopPump.h"
#include "presentation/widgets/WidgetSupport.h"

#include <glibmm/main.h>
#include <gtkmm/box.h>
#include <gtkmm/entry.h>
#include <gtkmm/window.h>

#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

using namespace PresentationTest;

namespace {

// Two entries standing as one data view.
struct PairView : Gtk::Box, Zem::IView {
    PairView() : Gtk::Box(Gtk::ORIENTATION_HORIZONTAL)
    {
        pack_start(first);
        pack_start(second);
        show_all();
    }
    Gtk::Entry first;
    Gtk::Entry second;
};

struct FrameWindow {
    FrameWindow()
    {
        loadStudioTheme();
        frame.setDataView(&data);
        column.pack_start(frame, Gtk::PACK_SHRINK);
        column.pack_start(outside, Gtk::PACK_SHRINK);
        window.add(column);
        window.set_default_size(300, 80);
        window.show_all();
        // The window gives its first entry the focus when shown; the frame starts outside edit mode.
        outside.grab_focus();
        settle();
        frame.signalIsEditModeChanged.connect([this] { ++modeChanges; });
    }

    // Lets the deferred focus calls run.
    void settle()
    {
        const Glib::RefPtr<Glib::MainContext> context = Glib::MainContext::get_default();
        for (int i = 0; i < 50 && context->pending(); ++i)
            context->iteration(false);
        pumpUntilIdle();
    }

    Gtk::Window window;
    Gtk::Box column{Gtk::ORIENTATION_VERTICAL};
    ZemTree::UnitView frame;
    PairView data;
    Gtk::Entry outside;
    int modeChanges = 0;
};

TEST(ValueViewTest, TooltipErrorAndTheErrorState)
{
    ZemTree::ValueView frame;
    const struct {
        const char* text;
        const char* tooltip;
        const char* error;
        const char* composed;
        bool isError;
    } rows[] = {
        {"a tooltip alone", "A", "", "A", false},
        {"tooltip and error", "A", "B", "A/nB", true},
        {"the error alone", "", "B", "B", true},
        {"cleared", "", "", "", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        frame.setTooltip(row.tooltip);
        frame.setError(row.error);
        EXPECT_EQ(row.composed, frame.getComposedTooltip());
        EXPECT_EQ(row.composed, std::string(frame.get_tooltip_text()));
        EXPECT_EQ(row.isError, (frame.get_state_flags() & Gtk::STATE_FLAG_INCONSISTENT) != 0);
    }
    // The same error again leaves the state flags as they are.
    frame.setError("B");
    frame.set_state_flags(Gtk::STATE_FLAG_SELECTED, true);
    frame.setError("B");
    EXPECT_EQ(Gtk::STATE_FLAG_SELECTED,
              frame.get_state_flags() & (Gtk::STATE_FLAG_SELECTED | Gtk::STATE_FLAG_INCONSISTENT));
}

TEST(ValueViewTest, FormulaLookAndMenuInBothLanguages)
{
    for (const int language : {0, 1}) {
        SCOPED_TRACE(language == 0 ? "English" : "Russian");
        ZemTreeTest::LanguageGuard guard(language);
        FrameWindow w;
        int resets = 0;
        std::vector<bool> requested;
        w.frame.signalResetValue.connect([&resets] { ++resets; });
        w.frame.signalIsFormulaSourceChanged.connect([&requested](bool isFormula) { requested.push_back(isFormula); });

        auto* const menu = dynamic_cast<ZemTree::MenuView*>(w.frame.getContextMenuView());
        ASSERT_NE(nullptr, menu);
        const std::vector<Gtk::Widget*> items = menu->get_children();
        ASSERT_EQ(3u, items.size());
        auto* const formula = dynamic_cast<Gtk::CheckMenuItem*>(items[0]);
        auto* const reset = dynamic_cast<Gtk::MenuItem*>(items[2]);
        ASSERT_NE(nullptr, formula);
        ASSERT_NE(nullptr, reset);
        EXPECT_EQ(language == 0 ? "Formula" : "Формула", formula->get_label());
        EXPECT_EQ(language == 0 ? "Default value" : "Значение по-умолчанию", reset->get_label());
        reset->activate();
        EXPECT_EQ(1, resets);

        formula->set_active(true);
        EXPECT_EQ(std::vector<bool>{true}, requested);
        w.frame.setIsFormulaSource(true);
        EXPECT_TRUE(w.frame.get_style_context()->has_class("formulaSource"));
        EXPECT_TRUE(w.frame.getFormulaOverlay().get_visible());
        EXPECT_FALSE(w.data.get_can_focus());
        w.frame.setIsFormulaSource(false);
        EXPECT_FALSE(w.frame.get_style_context()->has_class("formulaSource"));
        EXPECT_FALSE(w.frame.getFormulaOverlay().get_visible());
        EXPECT_TRUE(w.data.get_can_focus());
    }
}

TEST(ValueViewTest, FocusMovingInsideTheFrameEntersEditModeOnce)
{
    FrameWindow w;
    w.data.first.grab_focus();
    w.settle();
    EXPECT_TRUE(w.frame.isEditMode());
    w.data.second.grab_focus();
    w.settle();
    EXPECT_TRUE(w.frame.isEditMode());
    EXPECT_EQ(1, w.modeChanges);
    w.outside.grab_focus();
    w.settle();
    EXPECT_FALSE(w.frame.isEditMode());
    EXPECT_EQ(2, w.modeChanges);

    // A formula source never enters edit mode by focus.
    w.frame.setIsFormulaSource(true);
    w.frame.getFormulaOverlay().grab_focus();
    w.settle();
    EXPECT_FALSE(w.frame.isEditMode());

    const std::set<std::string> themed = getThemeClasses();
    for (const std::string& styleClass : collectOwnStyleClasses(w.window))
        EXPECT_TRUE(themed.count(styleClass)) << "no rule for ." << styleClass;
}

TEST(ValueViewTest, AFrameUnrealizedWithAFocusCallPendingNeverRunsIt)
{
    FrameWindow w;
    int gotFocus = 0;
    w.frame.signalGetFocus.connect([&gotFocus] { ++gotFocus; });
    w.data.first.grab_focus();
    w.window.hide();
    gtk_widget_unrealize(GTK_WIDGET(w.window.gobj()));
    w.settle();
    EXPECT_EQ(0, gotFocus);
    EXPECT_FALSE(w.frame.isEditMode());
}

} // namespace
