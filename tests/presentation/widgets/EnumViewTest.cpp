// Selectors over one shared list on a real display: both show the store, a choice reaches only its own
// presenter, the scroll wheel changes nothing, and a value the list lacks stays visible, marked.

#include "presentation/views/EnumView.h"

#include "presentation/presenters/EnumPresenter.h"
#include "presentation/presenters/ExternalEnumLimiterPresenter.h"
#include "presentation/support/MainLoopPump.h"
#include "presentation/widgets/WidgetSupport.h"

#include <gtkmm/box.h>
#include <gtkmm/window.h>

#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>

using namespace PresentationTest;

namespace {

bool scroll(Gtk::Widget& widget, GdkScrollDirection direction)
{
    GdkEvent* const event = gdk_event_new(GDK_SCROLL);
    event->scroll.window = GDK_WINDOW(g_object_ref(widget.get_window()->gobj()));
    event->scroll.direction = direction;
    gdk_event_set_device(event, gdk_seat_get_pointer(gdk_display_get_default_seat(gdk_display_get_default())));
    const bool isHandled = gtk_widget_event(widget.gobj(), event);
    gdk_event_free(event);
    return isHandled;
}

TEST(EnumViewTest, SelectorsShareTheListAndKeepAValueItLacks)
{
    loadStudioTheme();
    auto limiter = std::make_shared<ZemTree::ExternalEnumLimiterPresenter>();
    for (int i = 1; i <= 4; ++i)
        limiter->addLimiterValue("BinaryInputs/Group 1/Input " + std::to_string(i),
                                 "Binary inputs / Group 1 / Input " + std::to_string(i), static_cast<std::size_t>(-1));
    ZemTree::EnumPresenter first;
    ZemTree::EnumPresenter second;
    int firstChanges = 0;
    int secondChanges = 0;
    first.signalDataChanged.connect([&] { ++firstChanges; });
    second.signalDataChanged.connect([&] { ++secondChanges; });
    for (ZemTree::EnumPresenter* selector : {&first, &second})
        selector->setExternalLimiter(limiter);
    first.setData("BinaryInputs/Group 1/Input 2");
    second.setData("BinaryInputs/Group 3/Input 1");

    Gtk::Window window;
    Gtk::Box column(Gtk::ORIENTATION_VERTICAL, 6);
    auto& firstView = dynamic_cast<ZemTree::EnumView&>(*first.getView());
    auto& secondView = dynamic_cast<ZemTree::EnumView&>(*second.getView());
    column.pack_start(firstView, Gtk::PACK_SHRINK);
    column.pack_start(secondView, Gtk::PACK_SHRINK);
    window.add(column);
    window.set_default_size(420, 90);
    window.show_all();
    pumpUntilIdle();
    takePicture(window, "enum-selectors");

    EXPECT_EQ(firstView.getCombo().get_model(), secondView.getCombo().get_model());
    EXPECT_EQ(1, firstView.getCombo().get_active_row_number());
    EXPECT_FALSE(firstView.getMissingLabel().get_visible());
    EXPECT_EQ(-1, secondView.getCombo().get_active_row_number());
    EXPECT_TRUE(secondView.getMissingLabel().get_visible());
    EXPECT_EQ("BinaryInputs/Group 3/Input 1", secondView.getMissingLabel().get_text());
    EXPECT_TRUE(secondView.get_style_context()->has_class("missing"));

    EXPECT_TRUE(scroll(firstView.getCombo(), GDK_SCROLL_DOWN));
    EXPECT_EQ("BinaryInputs/Group 1/Input 2", first.getData());

    secondView.getCombo().set_active(3);
    EXPECT_EQ("BinaryInputs/Group 1/Input 4", second.getData());
    EXPECT_FALSE(secondView.getMissingLabel().get_visible());
    EXPECT_FALSE(secondView.get_style_context()->has_class("missing"));
    EXPECT_EQ(0, firstChanges);
    EXPECT_EQ(1, secondChanges);

    // A row added before the chosen one moves it; the choice follows its value, not its place.
    limiter->addLimiterValue("BinaryInputs/Group 1/Input 0", "Binary inputs / Group 1 / Input 0", 0);
    EXPECT_EQ(2, firstView.getCombo().get_active_row_number());
    EXPECT_EQ(0, firstChanges);

    const std::set<std::string> themed = getThemeClasses();
    for (const std::string& styleClass : collectOwnStyleClasses(window))
        EXPECT_TRUE(themed.count(styleClass)) << "no rule for ." << styleClass;
}

} // namespace
