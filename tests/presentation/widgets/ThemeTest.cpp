#include "core/tree/Node.h"
#include "presentation/frame/CollectionBoxView.h"
#include "presentation/frame/ConfirmWindowPresenter.h"
#include "presentation/frame/NumericEntry.h"
#include "presentation/presenters/NodeDescriptorPresenter.h"
#include "presentation/presenters/TextPresenter.h"
#include "presentation/support/CollectionFixtures.h"
#include "presentation/support/MainLoopPump.h"
#include "presentation/widgets/WidgetSupport.h"

#include <gtkmm/window.h>

#include <deque>
#include <gtest/gtest.h>
#include <memory>
#include <string>

using namespace PresentationTest;

namespace {

// Text rows in a collection, a node's description and a refused number, in one confirm window of a fixed size.
struct SampleWindow {
    class TextFactory : public Zem::IPresenterFactory<Item*> {
    public:
        std::unique_ptr<Zem::IPresenter> createPresenter(Item* item) override
        {
            return std::make_unique<ZemTree::TextPresenter>(item->name, item->kind == ItemKind::Visible);
        }
    };

    SampleWindow()
        : node("Node", ZemTree::LocalString::create("Trip time", "Время срабатывания")), descriptor(&node),
          rows(factory)
    {
        loadStudioTheme();
        for (const char* name : {"Setting 1.50 s", "Measured 1.52 s", "Deviation 0.02 s"})
            items.push_back(Item{name, ItemKind::Visible});
        for (Item& item : items)
            collection.add(&item);
        rows.setCollection(&collection);
        rows.getView();
        entry.setValue(5);
        entry.set_text("5,5x");
        entry.commit();
        content.pack_start(*dynamic_cast<Gtk::Widget*>(descriptor.getView()), Gtk::PACK_SHRINK);
        content.pack_start(*dynamic_cast<Gtk::Widget*>(rows.getView()), Gtk::PACK_SHRINK);
        content.pack_start(entry, Gtk::PACK_SHRINK);
        content.show_all();
        window.setTitle("Sample");
        window.setDefaultSize(360, 220);
        window.setContent(&content);
        window.show(nullptr);
    }

    // A plain column standing as a content view.
    struct ContentBox : Gtk::Box, Zem::IView {
        ContentBox() : Gtk::Box(Gtk::ORIENTATION_VERTICAL) {}
    };

    Gtk::Window& getWindow() { return *dynamic_cast<Gtk::Window*>(window.getView()); }

    ZemTree::Node node;
    ZemTree::NodeDescriptorPresenter descriptor;
    TextFactory factory;
    std::deque<Item> items;
    Zem::NotifyCollection<Item*> collection;
    Zem::NotifyCollectionPresenter<Item*> rows;
    Zem::NumericEntry entry{Zem::NumericEntry::Mode::Real};
    ContentBox content;
    Zem::ConfirmWindowPresenter window;
};

TEST(ThemeTest, EveryStyleClassOfTheViewsHasARuleInTheStudioTheme)
{
    SampleWindow sample;
    ASSERT_TRUE(pumpUntilIdle());
    const std::set<std::string> theme = getThemeClasses();
    const std::set<std::string> used = collectOwnStyleClasses(sample.getWindow());
    for (const char* expected : {"CollectionBoxView", "TextView", "NodeDescriptorView", "NumericEntry",
                                 "NumericEntryRefused", "ConfirmWindowView", "ConfirmWindowButtons", "WindowView"}) {
        EXPECT_EQ(used.count(expected), 1u) << expected << " was not found in the widget tree";
    }
    for (const std::string& name : used) {
        SCOPED_TRACE(name);
        EXPECT_EQ(theme.count(name), 1u) << "the style class has no rule in the studio's theme";
    }
}

TEST(ThemeTest, PictureOfTheWindowShowsTheRefusedEntry)
{
    SampleWindow sample;
    Gtk::Window& window = sample.getWindow();
    ASSERT_TRUE(pumpUntilIdle());
    ASSERT_TRUE(window.get_mapped());
    const auto picture = takePicture(window, "sample-window");
    EXPECT_EQ(picture->get_width(), window.get_allocated_width());
    EXPECT_EQ(picture->get_height(), window.get_allocated_height());
    EXPECT_GE(picture->get_width(), 360);
    EXPECT_GE(countColours(picture, 16), 16) << "the picture is blank or nearly so";

    // The refused entry is drawn in the theme's light red somewhere inside its own area.
    int x = 0;
    int y = 0;
    ASSERT_TRUE(sample.entry.translate_coordinates(window, 0, 0, x, y));
    const int width = sample.entry.get_allocated_width();
    const int height = sample.entry.get_allocated_height();
    int reddish = 0;
    for (int dy = 0; dy < height; ++dy) {
        for (int dx = 0; dx < width; ++dx) {
            if (pixelAt(picture, x + dx, y + dy) == 0xf4c7c3u)
                ++reddish;
        }
    }
    EXPECT_GT(reddish, width * height / 4) << "the refusal does not show";
}

} // namespace
