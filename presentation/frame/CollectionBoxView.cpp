#include "presentation/frame/CollectionBoxView.h"

#include <algorithm>

namespace Zem {

std::unique_ptr<IEditableCollectionView> createCollectionBoxView(CollectionOrientation orientation)
{
    return std::make_unique<CollectionBoxView>(orientation);
}

CollectionBoxView::CollectionBoxView(CollectionOrientation orientation)
    : Gtk::Box(orientation == CollectionOrientation::Horizontal ? Gtk::ORIENTATION_HORIZONTAL
                                                                : Gtk::ORIENTATION_VERTICAL)
{
    get_style_context()->add_class("CollectionBoxView");
    _removedHandler = g_signal_connect(gobj(), "remove", G_CALLBACK(&CollectionBoxView::_onWidgetRemoved), this);
}

// The child widgets belong to their presenters, which may have deleted them already: only the widgets still in the
// box are taken out, so that the box's end does not destroy them.
CollectionBoxView::~CollectionBoxView()
{
    g_signal_handler_disconnect(gobj(), _removedHandler);
    _views.clear();
    for (Gtk::Widget* child : get_children())
        Gtk::Box::remove(*child);
}

void CollectionBoxView::clear()
{
    std::vector<Entry> views;
    views.swap(_views);
    for (const Entry& entry : views) {
        if (entry.widget != nullptr)
            gtk_container_remove(GTK_CONTAINER(gobj()), entry.widget);
    }
}

void CollectionBoxView::add(IView* view)
{
    insert(_views.size(), view);
}

void CollectionBoxView::insert(std::size_t index, IView* view)
{
    if (view == nullptr)
        return;
    index = std::min(index, _views.size());
    auto* const widget = dynamic_cast<Gtk::Widget*>(view);
    _views.insert(_views.begin() + static_cast<std::ptrdiff_t>(index), Entry{view, widget ? widget->gobj() : nullptr});
    if (widget == nullptr)
        return;
    pack_start(*widget, Gtk::PACK_SHRINK);
    reorder_child(*widget, _getBoxPosition(index));
    widget->show();
}

void CollectionBoxView::remove(IView* view)
{
    const auto found = _find(view);
    if (found == _views.end())
        return;
    GtkWidget* const widget = found->widget;
    _views.erase(found);
    if (widget != nullptr)
        gtk_container_remove(GTK_CONTAINER(gobj()), widget);
}

void CollectionBoxView::move(std::size_t index, IView* view)
{
    const auto found = _find(view);
    if (found == _views.end())
        return;
    const Entry entry = *found;
    _views.erase(found);
    index = std::min(index, _views.size());
    _views.insert(_views.begin() + static_cast<std::ptrdiff_t>(index), entry);
    if (entry.widget != nullptr)
        gtk_box_reorder_child(gobj(), entry.widget, _getBoxPosition(index));
}

int CollectionBoxView::_getBoxPosition(std::size_t index) const
{
    const auto end = _views.begin() + static_cast<std::ptrdiff_t>(std::min(index, _views.size()));
    return static_cast<int>(std::count_if(_views.begin(), end, [](const Entry& e) { return e.widget != nullptr; }));
}

std::vector<CollectionBoxView::Entry>::iterator CollectionBoxView::_find(IView* view)
{
    return std::find_if(_views.begin(), _views.end(),
                        [view](const Entry& e) { return view != nullptr && e.view == view; });
}

void CollectionBoxView::_onWidgetRemoved(GtkContainer* /*box*/, GtkWidget* widget, gpointer self)
{
    auto& views = static_cast<CollectionBoxView*>(self)->_views;
    views.erase(std::remove_if(views.begin(), views.end(), [widget](const Entry& e) { return e.widget == widget; }),
                views.end());
}

} // namespace Zem
