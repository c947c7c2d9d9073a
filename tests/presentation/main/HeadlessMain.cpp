#include "presentation/frame/UpdateView.h"

#include <glibmm/init.h>

#include <gtest/gtest.h>

// Presenter tests run GLib's main loop on this thread, which is the GUI thread of the handoff; no display.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    Glib::init();
    Zem::initUpdateView();
    const int result = RUN_ALL_TESTS();
    Zem::shutdownUpdateView();
    return result;
}
