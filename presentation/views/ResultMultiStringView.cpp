#include "presentation/views/ResultMultiStringView.h"

#include "presentation/views/ResultCell.h"

namespace ZemTree {

ResultMultiStringView::ResultMultiStringView() : Gtk::Box(Gtk::ORIENTATION_VERTICAL)
{
    setOverlappingSpacing(*this);
    get_style_context()->add_class("ResultMultiString");
}

void ResultMultiStringView::setItems(const std::vector<Zem::IPresenter*>& items)
{
    showItemRows(*this, items);
}

} // namespace ZemTree
