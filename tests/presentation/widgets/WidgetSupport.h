#pragma once

#include <cairomm/surface.h>
#include <gtkmm/widget.h>

#include <set>
#include <string>

// What widget tests share: the studio's theme, the style classes of a widget tree, pictures of widgets.
namespace PresentationTest {

// Loads the studio's CSS over GTK's theme for the default screen, once.
void loadStudioTheme();

// Every class that a rule of the studio's CSS names.
std::set<std::string> getThemeClasses();

// The style classes of `root` and all its descendants, internal children too, without the classes that GTK
// gives a widget of that kind by itself.
std::set<std::string> collectOwnStyleClasses(Gtk::Widget& root);

// Draws `widget` as it is now into an image of its allocated size and writes it as `<name>.png` into the build's
// test-artefacts folder. Call once the main loop is idle.
Cairo::RefPtr<Cairo::ImageSurface> takePicture(Gtk::Widget& widget, const std::string& name);

// The colour at (x, y) of a picture, as 0xRRGGBB.
unsigned pixelAt(const Cairo::RefPtr<Cairo::ImageSurface>& picture, int x, int y);

// How many different colours the picture has, counting up to `limit`.
int countColours(const Cairo::RefPtr<Cairo::ImageSurface>& picture, int limit);

} // namespace PresentationTest
