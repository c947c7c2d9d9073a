#include "presentation/frame/WindowPresenter.h"

#include "presentation/frame/ConfirmWindowPresenter.h"
#include "presentation/frame/ConfirmWindowView.h"
#include "presentation/frame/WindowView.h"
#include "presentation/presenters/TextPresenter.h"
#include "presentation/support/MainLoopPump.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/window.h>

#include <functional>
#include <gtest/gtest.h>
#include <memory>

using namespace PresentationTest;

namespace {

void sendDelete(Gtk::Window& window)
{
    GdkEvent* const event = gdk_event_new(GDK_DELETE);
    event->any.window = GDK_WINDOW(g_object_ref(window.get_window()->gobj()));
    gtk_main_do_event(event);
    gdk_event_free(event);
}

void sendEscape(Gtk::Window& window)
{
    GdkEvent* const event = gdk_event_new(GDK_KEY_PRESS);
    event->key.window = GDK_WINDOW(g_object_ref(window.get_window()->gobj()));
    event->key.keyval = GDK_KEY_Escape;
    gdk_event_set_device(event, gdk_seat_get_keyboard(gdk_display_get_default_seat(gdk_display_get_default())));
    gtk_widget_event(GTK_WIDGET(window.gobj()), event);
    gdk_event_free(event);
}

// An owner window with a view inside, over which the editor windows open.
struct OwnerFixture {
    OwnerFixture() : content("content", false), inside("inside", false)
    {
        owner.set_default_size(300, 200);
        owner.add(*dynamic_cast<Gtk::Widget*>(inside.getView()));
        owner.show_all();
    }

    Gtk::Window owner;
    ZemTree::TextPresenter content;
    ZemTree::TextPresenter inside;
};

TEST(WindowPresenterTest, ConfirmWindowDeletedInsideItsClosedSlot)
{
    struct Row {
        const char* text;
        std::function<void(Zem::ConfirmWindowView&)> act;
        bool isConfirmed;
    };
    const Row rows[] = {
        {"OK", [](Zem::ConfirmWindowView& w) { w.getOkButton().clicked(); }, true},
        {"OK twice",
         [](Zem::ConfirmWindowView& w) {
             w.getOkButton().clicked();
             w.getOkButton().clicked();
         },
         true},
        {"Cancel", [](Zem::ConfirmWindowView& w) { w.getCancelButton().clicked(); }, false},
        {"close button", [](Zem::ConfirmWindowView& w) { sendDelete(w); }, false},
        {"Escape", [](Zem::ConfirmWindowView& w) { sendEscape(w); }, false},
        {"Cancel then OK",
         [](Zem::ConfirmWindowView& w) {
             w.getCancelButton().clicked();
             w.getOkButton().clicked();
         },
         false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        OwnerFixture f;
        auto* presenter = new Zem::ConfirmWindowPresenter();
        presenter->setTitle("Editor");
        presenter->setContent(f.content.getView());
        presenter->setModal(true);
        presenter->show(f.inside.getView());
        auto* const window = dynamic_cast<Zem::ConfirmWindowView*>(presenter->getView());
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(window->get_transient_for(), &f.owner);
        EXPECT_TRUE(window->get_modal());
        EXPECT_EQ(window->get_title(), "Editor");
        ASSERT_TRUE(pumpUntilIdle());

        int closed = 0;
        bool wasHidden = false;
        bool wasConfirmed = false;
        presenter->signalClosed.connect([&] {
            ++closed;
            wasHidden = !window->get_visible();
            wasConfirmed = presenter->isConfirmed();
            delete presenter;
            presenter = nullptr;
        });
        row.act(*window);
        EXPECT_EQ(closed, 0) << "closed was raised inside the user's action";
        ASSERT_TRUE(pumpUntilIdle());
        EXPECT_EQ(closed, 1);
        EXPECT_TRUE(wasHidden);
        EXPECT_EQ(wasConfirmed, row.isConfirmed);
        EXPECT_EQ(presenter, nullptr);
        EXPECT_EQ(f.content.getText(), "content") << "the content outlives the window";
    }
}

TEST(WindowPresenterTest, PlainWindowClosesOnceByItsCloseButton)
{
    OwnerFixture f;
    auto presenter = std::make_unique<Zem::WindowPresenter>();
    presenter->setTitle("Parameters");
    presenter->setDefaultSize(320, 240);
    presenter->setContent(f.content.getView());
    presenter->show(f.inside.getView());
    auto* const window = dynamic_cast<Zem::WindowView*>(presenter->getView());
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(pumpUntilIdle());
    int width = 0;
    int height = 0;
    window->get_default_size(width, height);
    EXPECT_EQ(width, 320);
    EXPECT_EQ(height, 240);

    int closed = 0;
    presenter->signalClosed.connect([&] {
        ++closed;
        presenter.reset();
    });
    sendDelete(*window);
    sendDelete(*window);
    ASSERT_TRUE(pumpUntilIdle());
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(presenter, nullptr);
}

// The content's presenter may go first: its widget leaves the window, which stays usable.
TEST(WindowPresenterTest, ContentDeletedBeforeTheWindow)
{
    OwnerFixture f;
    auto content = std::make_unique<ZemTree::TextPresenter>("short-lived", true);
    Zem::WindowPresenter presenter;
    presenter.setContent(content->getView());
    presenter.show(nullptr);
    ASSERT_TRUE(pumpUntilIdle());
    content.reset();
    presenter.close();
    ASSERT_TRUE(pumpUntilIdle());
    EXPECT_TRUE(presenter.isClosed());
}

} // namespace
