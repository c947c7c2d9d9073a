#include "presentation/frame/WindowView.h"

namespace Zem {

WindowView::WindowView() : _layout(Gtk::ORIENTATION_VERTICAL)
{
    get_style_context()->add_class("WindowView");
    set_position(Gtk::WIN_POS_CENTER_ON_PARENT);
    add(_layout);
    _layout.show();
}

WindowView::~WindowView()
{
    setContent(nullptr);
}

void WindowView::setTitle(const std::string& title)
{
    set_title(title);
}

void WindowView::setContent(IView* content)
{
    auto* const widget = dynamic_cast<Gtk::Widget*>(content);
    if (widget == _content && _isContentInLayout())
        return;
    // A content deleted by its presenter has left the layout already; its pointer is only compared.
    if (_content != nullptr && _isContentInLayout())
        _layout.remove(*_content);
    _content = widget;
    if (_content == nullptr)
        return;
    _layout.pack_start(*_content, Gtk::PACK_EXPAND_WIDGET);
    _layout.reorder_child(*_content, 0);
    _content->show();
}

bool WindowView::_isContentInLayout() const
{
    if (_content == nullptr)
        return false;
    for (const Gtk::Widget* child : _layout.get_children()) {
        if (child == _content)
            return true;
    }
    return false;
}

void WindowView::setModal(bool isModal)
{
    set_modal(isModal);
}

void WindowView::setDefaultSize(int width, int height)
{
    set_default_size(width, height);
}

void WindowView::showOver(IView* owner)
{
    if (auto* const widget = dynamic_cast<Gtk::Widget*>(owner)) {
        if (auto* const top = dynamic_cast<Gtk::Window*>(widget->get_toplevel()); top != nullptr && top != this)
            set_transient_for(*top);
    }
    present();
}

void WindowView::close()
{
    hide();
}

// The window stays; the presenter decides and deletes it.
bool WindowView::on_delete_event(GdkEventAny* /*event*/)
{
    signalCloseRequested.emit();
    return true;
}

} // namespace Zem
