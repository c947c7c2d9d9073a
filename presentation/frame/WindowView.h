#pragma once

#include "presentation/frame/IWindowView.h"

#include <gtkmm/box.h>
#include <gtkmm/window.h>

namespace Zem {

// The default window view: a column with the content on top, filling the window.
class WindowView : public Gtk::Window, public virtual IWindowView {
public:
    WindowView();
    WindowView(const WindowView&) = delete;
    WindowView& operator=(const WindowView&) = delete;
    // The content belongs to another presenter: it leaves before the window goes.
    ~WindowView() override;

    void setTitle(const std::string& title) override;
    void setContent(IView* content) override;
    void setModal(bool isModal) override;
    void setDefaultSize(int width, int height) override;
    void showOver(IView* owner) override;
    void close() override;

protected:
    bool on_delete_event(GdkEventAny* event) override;

    Gtk::Box _layout;

private:
    bool _isContentInLayout() const;

    Gtk::Widget* _content = nullptr;
};

} // namespace Zem
