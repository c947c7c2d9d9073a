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
    for (Gtk::Widget* child : get_children())
        remove(*child);
    for (Zem::IPresenter* item : items) {
        if (auto* const widget = dynamic_cast<Gtk::Widget*>(item->getView()))
            add(*widget);
    }
    show_all();
}

} // namespace ZemTree
