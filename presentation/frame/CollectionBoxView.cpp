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
}

// The child widgets belong to their presenters: they leave the box before it goes.
CollectionBoxView::~CollectionBoxView()
{
    clear();
}

void CollectionBoxView::clear()
{
    for (IView* view : _views) {
        if (auto* widget = dynamic_cast<Gtk::Widget*>(view))
            Gtk::Box::remove(*widget);
    }
    _views.clear();
}

void CollectionBoxView::add(IView* view)
{
    insert(_views.size(), view);
}

void CollectionBoxView::insert(std::size_t index, IView* view)
{
    if (view == nullptr)
        return;
    _place(std::min(index, _views.size()), view);
    if (auto* widget = dynamic_cast<Gtk::Widget*>(view))
        widget->show();
}

void CollectionBoxView::remove(IView* view)
{
    const auto found = std::find(_views.begin(), _views.end(), view);
    if (view == nullptr || found == _views.end())
        return;
    _views.erase(found);
    if (auto* widget = dynamic_cast<Gtk::Widget*>(view))
        Gtk::Box::remove(*widget);
}

void CollectionBoxView::move(std::size_t index, IView* view)
{
    const auto found = std::find(_views.begin(), _views.end(), view);
    if (view == nullptr || found == _views.end())
        return;
    _views.erase(found);
    index = std::min(index, _views.size());
    _views.insert(_views.begin() + static_cast<std::ptrdiff_t>(index), view);
    if (auto* widget = dynamic_cast<Gtk::Widget*>(view))
        reorder_child(*widget, _getBoxPosition(index));
}

int CollectionBoxView::_getBoxPosition(std::size_t index) const
{
    int position = 0;
    for (std::size_t i = 0; i < index && i < _views.size(); ++i) {
        if (dynamic_cast<Gtk::Widget*>(_views[i]) != nullptr)
            ++position;
    }
    return position;
}

void CollectionBoxView::_place(std::size_t index, IView* view)
{
    _views.insert(_views.begin() + static_cast<std::ptrdiff_t>(index), view);
    auto* widget = dynamic_cast<Gtk::Widget*>(view);
    if (widget == nullptr)
        return;
    pack_start(*widget, Gtk::PACK_SHRINK);
    reorder_child(*widget, _getBoxPosition(index));
}

} // namespace Zem
