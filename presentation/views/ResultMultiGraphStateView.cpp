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
    showItemRows(*this, items);
}

} // namespace ZemTree
