#include "presentation/views/ResultMultiNumericView.h"

#include "presentation/views/ResultCell.h"

namespace ZemTree {

ResultMultiNumericView::ResultMultiNumericView() : Gtk::Box(Gtk::ORIENTATION_VERTICAL)
{
    setOverlappingSpacing(*this);
    get_style_context()->add_class("ResultMultiNumeric");
}

void ResultMultiNumericView::setItems(const std::vector<Zem::IPresenter*>& items)
{
    showItemRows(*this, items);
}

} // namespace ZemTree
