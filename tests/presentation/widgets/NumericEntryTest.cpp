#include "presentation/frame/NumericEntry.h"

#include "LanguageGuard.h"
#include "presentation/support/MainLoopPump.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/menu.h>
#include <gtkmm/window.h>

#include <gtest/gtest.h>
#include <string>

namespace {

using Mode = Zem::NumericEntry::Mode;

// Sends a key press to the widget as the display would.
bool pressKey(Gtk::Widget& widget, guint keyval)
{
    GdkEvent* const event = gdk_event_new(GDK_KEY_PRESS);
    event->key.window = GDK_WINDOW(g_object_ref(widget.get_window()->gobj()));
    event->key.keyval = keyval;
    gdk_event_set_device(event, gdk_seat_get_keyboard(gdk_display_get_default_seat(gdk_display_get_default())));
    const bool isHandled = gtk_widget_event(widget.gobj(), event);
    gdk_event_free(event);
    return isHandled;
}

void sendFocusOut(Gtk::Widget& widget)
{
    GdkEvent* const event = gdk_event_new(GDK_FOCUS_CHANGE);
    event->focus_change.window = GDK_WINDOW(g_object_ref(widget.get_window()->gobj()));
    event->focus_change.in = FALSE;
    gtk_widget_send_focus_change(widget.gobj(), event);
    gdk_event_free(event);
}

// Typing is the text changing; a commit is Enter.
struct EntryFixture {
    explicit EntryFixture(Mode mode) : entry(mode)
    {
        window.set_default_size(200, 40);
        window.add(entry);
        window.show_all();
        entry.setValue(7);
        entry.signalValueChanged.connect([this] { ++signals; });
    }

    void type(const std::string& text) { entry.set_text(text); }

    Gtk::Window window;
    Zem::NumericEntry entry;
    int signals = 0;
};

TEST(NumericEntryTest, CommitGivesValueOrRefusalInBothModes)
{
    struct Row {
        const char* text;
        Mode mode;
        double value;
        bool isRefused;
        const char* shown;
    };
    const Row rows[] = {
        {"12", Mode::Integer, 12, false, "12"},
        {"12", Mode::Real, 12, false, "12"},
        {"12a", Mode::Integer, 7, true, "12a"},
        {"12a", Mode::Real, 7, true, "12a"},
        {"1,5", Mode::Integer, 7, true, "1,5"},
        {"1,5", Mode::Real, 1.5, false, "1.5"},
        {"", Mode::Integer, 7, true, ""},
        {"", Mode::Real, 7, true, ""},
        {"1e3", Mode::Integer, 1000, false, "1000"},
        {"1e3", Mode::Real, 1000, false, "1000"},
        {"nan", Mode::Integer, 7, true, "nan"},
        {"nan", Mode::Real, 7, true, "nan"},
        {"-inf", Mode::Real, 7, true, "-inf"},
        {" 3 ", Mode::Integer, 3, false, "3"},
        {"5001", Mode::Integer, 7, true, "5001"},
        {"-0,5", Mode::Real, 7, true, "-0,5"},
        {"5000", Mode::Integer, 5000, false, "5000"},
        {"7", Mode::Real, 7, false, "7"},
        {"1e300", Mode::Integer, 7, true, "1e300"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string("'") + row.text + (row.mode == Mode::Integer ? "' integer" : "' real"));
        EntryFixture f(row.mode);
        f.entry.setBounds(0.0, 5000.0);
        f.type(row.text);
        EXPECT_EQ(f.signals, 0) << "typing committed";
        f.entry.activate();
        EXPECT_DOUBLE_EQ(f.entry.getValue(), row.value);
        EXPECT_EQ(f.entry.isRefused(), row.isRefused);
        EXPECT_EQ(f.entry.get_text(), row.shown);
        EXPECT_EQ(f.entry.get_style_context()->has_class("NumericEntryRefused"), row.isRefused);
        EXPECT_EQ(f.signals, !row.isRefused && row.value != 7 ? 1 : 0);
        if (row.isRefused) {
            EXPECT_EQ(f.entry.get_tooltip_text(), f.entry.getRefusal());
            EXPECT_FALSE(f.entry.getRefusal().empty());
        }
    }
}

TEST(NumericEntryTest, RefusalTextsComeInTheCurrentLanguage)
{
    struct Row {
        const char* text;
        Mode mode;
        const char* english;
        const char* russian;
    };
    const Row rows[] = {
        {"", Mode::Real, "Enter a number", "Введите число"},
        {"x", Mode::Real, "This is not a number", "Это не число"},
        {"2.5", Mode::Integer, "A whole number is expected", "Ожидается целое число"},
        {"-1", Mode::Integer, "The least allowed value is 0", "Наименьшее допустимое значение 0"},
        {"10.5", Mode::Real, "The greatest allowed value is 10", "Наибольшее допустимое значение 10"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        for (int language : {0, 1}) {
            ZemTreeTest::LanguageGuard guard(language);
            const auto parsed = Zem::NumericEntry::parse(row.text, row.mode, 0.0, 10.0);
            EXPECT_FALSE(parsed.isAccepted);
            EXPECT_EQ(parsed.refusal, language == 0 ? row.english : row.russian);
        }
    }
}

TEST(NumericEntryTest, FocusLeavingCommitsAndEscapeRestores)
{
    EntryFixture f(Mode::Real);
    f.type("2,25");
    sendFocusOut(f.entry);
    EXPECT_DOUBLE_EQ(f.entry.getValue(), 2.25);
    EXPECT_EQ(f.signals, 1);

    f.type("oops");
    f.entry.activate();
    ASSERT_TRUE(f.entry.isRefused());
    EXPECT_TRUE(pressKey(f.entry, GDK_KEY_Escape));
    EXPECT_EQ(f.entry.get_text(), "2.25");
    EXPECT_FALSE(f.entry.isRefused());
    EXPECT_FALSE(f.entry.get_style_context()->has_class("NumericEntryRefused"));
    EXPECT_FALSE(pressKey(f.entry, GDK_KEY_Escape)) << "Escape with nothing to undo is passed on";
    EXPECT_EQ(f.signals, 1);
    EXPECT_DOUBLE_EQ(f.entry.getValue(), 2.25);
}

TEST(NumericEntryTest, UntouchedTextCommitsNothing)
{
    EntryFixture f(Mode::Real);
    f.entry.setValue(0.1 + 0.2);
    const double shown = f.entry.getValue();
    sendFocusOut(f.entry);
    f.entry.activate();
    EXPECT_EQ(f.entry.getValue(), shown) << "the value was replaced by its rounded text";
    EXPECT_EQ(f.signals, 0);
}

TEST(NumericEntryTest, ScrollWheelChangesNothing)
{
    EntryFixture f(Mode::Integer);
    for (GdkScrollDirection direction : {GDK_SCROLL_UP, GDK_SCROLL_DOWN}) {
        GdkEvent* const event = gdk_event_new(GDK_SCROLL);
        event->scroll.window = GDK_WINDOW(g_object_ref(f.entry.get_window()->gobj()));
        event->scroll.direction = direction;
        gtk_widget_event(GTK_WIDGET(f.entry.gobj()), event);
        gdk_event_free(event);
    }
    EXPECT_DOUBLE_EQ(f.entry.getValue(), 7);
    EXPECT_EQ(f.entry.get_text(), "7");
    EXPECT_EQ(f.signals, 0);
}

TEST(NumericEntryTest, SetValueShowsWithoutSignalAndDropsARefusal)
{
    EntryFixture f(Mode::Integer);
    f.type("bad");
    f.entry.activate();
    ASSERT_TRUE(f.entry.isRefused());
    f.entry.setValue(41.6);
    EXPECT_EQ(f.entry.get_text(), "42");
    EXPECT_DOUBLE_EQ(f.entry.getValue(), 42);
    EXPECT_FALSE(f.entry.isRefused());
    EXPECT_EQ(f.signals, 0);
}

} // namespace
