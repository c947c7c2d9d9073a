#include "presentation/widgets/WidgetSupport.h"

#include <gtk/gtk.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/stylecontext.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

namespace PresentationTest {

namespace {

// Classes that GTK sets by state or orientation, which a fresh widget of the same kind need not have.
const std::set<std::string> gtkStateClasses = {"horizontal", "vertical", "text-button", "image-button", "default",
                                               "background", "csd",      "solid-csd",   "titlebar",     "popup",
                                               "linked",     "flat",     "combo"};

std::string readTheme()
{
    std::ifstream file(ZTR_THEME_CSS);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// The nearest GTK type of a widget, past gtkmm's derived types.
GType gtkTypeOf(GtkWidget* widget)
{
    GType type = G_OBJECT_TYPE(widget);
    while (type != 0 && std::string(g_type_name(type)).rfind("gtkmm__", 0) == 0)
        type = g_type_parent(type);
    return type;
}

std::set<std::string> classesOf(GtkWidget* widget)
{
    std::set<std::string> classes;
    GList* const list = gtk_style_context_list_classes(gtk_widget_get_style_context(widget));
    for (GList* item = list; item != nullptr; item = item->next)
        classes.insert(static_cast<const char*>(item->data));
    g_list_free(list);
    return classes;
}

std::set<std::string> defaultClassesOf(GType type)
{
    if (G_TYPE_IS_ABSTRACT(type))
        return {};
    GtkWidget* const fresh = GTK_WIDGET(g_object_new(type, nullptr));
    g_object_ref_sink(fresh);
    std::set<std::string> classes = classesOf(fresh);
    gtk_widget_destroy(fresh);
    g_object_unref(fresh);
    return classes;
}

void collect(GtkWidget* widget, std::set<std::string>& classes)
{
    const std::set<std::string> defaults = defaultClassesOf(gtkTypeOf(widget));
    for (const std::string& name : classesOf(widget)) {
        if (defaults.count(name) == 0 && gtkStateClasses.count(name) == 0)
            classes.insert(name);
    }
    if (GTK_IS_CONTAINER(widget)) {
        gtk_container_forall(
            GTK_CONTAINER(widget),
            [](GtkWidget* child, gpointer data) { collect(child, *static_cast<std::set<std::string>*>(data)); },
            &classes);
    }
}

} // namespace

void loadStudioTheme()
{
    static bool isLoaded = false;
    if (isLoaded)
        return;
    const Glib::RefPtr<Gtk::CssProvider> provider = Gtk::CssProvider::create();
    provider->load_from_path(ZTR_THEME_CSS);
    Gtk::StyleContext::add_provider_for_screen(Gdk::Screen::get_default(), provider,
                                               GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    isLoaded = true;
}

std::set<std::string> getThemeClasses()
{
    const std::string text = std::regex_replace(readTheme(), std::regex(R"(/\*[\s\S]*?\*/)"), "");
    std::set<std::string> classes;
    // Only selectors: the text before each block.
    const std::regex block(R"(([^{}]*)\{[^}]*\})");
    const std::regex name(R"(\.([A-Za-z_][A-Za-z0-9_-]*))");
    for (auto it = std::sregex_iterator(text.begin(), text.end(), block); it != std::sregex_iterator(); ++it) {
        const std::string selector = (*it)[1];
        for (auto n = std::sregex_iterator(selector.begin(), selector.end(), name); n != std::sregex_iterator(); ++n)
            classes.insert((*n)[1]);
    }
    return classes;
}

std::set<std::string> collectOwnStyleClasses(Gtk::Widget& root)
{
    std::set<std::string> classes;
    collect(root.gobj(), classes);
    return classes;
}

Cairo::RefPtr<Cairo::ImageSurface> takePicture(Gtk::Widget& widget, const std::string& name)
{
    const int width = widget.get_allocated_width();
    const int height = widget.get_allocated_height();
    auto picture = Cairo::ImageSurface::create(Cairo::FORMAT_RGB24, width, height);
    const Cairo::RefPtr<Cairo::Context> context = Cairo::Context::create(picture);
    gtk_widget_draw(widget.gobj(), context->cobj());
    picture->flush();
    std::filesystem::create_directories(ZTR_TEST_ARTEFACTS);
    picture->write_to_png(std::string(ZTR_TEST_ARTEFACTS) + "/" + name + ".png");
    return picture;
}

unsigned pixelAt(const Cairo::RefPtr<Cairo::ImageSurface>& picture, int x, int y)
{
    const unsigned char* const row = picture->get_data() + y * picture->get_stride();
    const auto* const pixel = reinterpret_cast<const std::uint32_t*>(row) + x;
    return *pixel & 0xffffffu;
}

int countColours(const Cairo::RefPtr<Cairo::ImageSurface>& picture, int limit)
{
    std::set<unsigned> colours;
    for (int y = 0; y < picture->get_height(); ++y) {
        for (int x = 0; x < picture->get_width(); ++x) {
            colours.insert(pixelAt(picture, x, y));
            if (static_cast<int>(colours.size()) >= limit)
                return limit;
        }
    }
    return static_cast<int>(colours.size());
}

} // namespace PresentationTest
