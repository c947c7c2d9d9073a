#include "presentation/views/ResultMultiGraphStateView.h"

#include "presentation/views/ResultCell.h"

namespace ZemTree {

ResultMultiGraphStateView::ResultMultiGraphStateView() : Gtk::Box(Gtk::ORIENTATION_VERTICAL)
{
    setOverlappingSpacing(*this);
    get_style_context()->add_class("ResultMultiGraphStateView");
}

void ResultMultiGraphStateView::setItems(const std::vector<Zem::IPresenter*>& items)
{
    for (Gtk::Widget* child : get_children())
        remove(*child);
    for (Zem::IPresenter* item : items) {
        if (auto* const widget = dynamic_cast<Gtk::Widget*>(item->getView()))
            add(*widget);
    }
    show_all();
}

} // namespace ZemTree
