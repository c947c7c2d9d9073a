#include "presentation/frame/UpdateView.h"

#include <glib.h>
#include <gtkmm/main.h>
#include <gtkmm/settings.h>

#include <cstdlib>
#include <gtest/gtest.h>

// Widget tests on the display the test runner gives (xvfb-run): GTK's own theme, one font, no animations, and
// every GTK critical or warning ends the run, so that a widget added twice is a failure and not a log line.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    setenv("GTK_THEME", "Adwaita", 1);
    setenv("NO_AT_BRIDGE", "1", 1);
    g_log_set_always_fatal(static_cast<GLogLevelFlags>(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING));
    Gtk::Main kit(argc, argv);
    const Glib::RefPtr<Gtk::Settings> settings = Gtk::Settings::get_default();
    settings->property_gtk_enable_animations() = false;
    settings->property_gtk_font_name() = "DejaVu Sans 10";
    Zem::initUpdateView();
    const int result = RUN_ALL_TESTS();
    Zem::shutdownUpdateView();
    return result;
}
