#include "presentation/views/ResultMultiNumericItemView.h"

#include "presentation/views/ResultCell.h"
#include "presentation/widgets/SharedSizeGroupOwner.h"

namespace ZemTree {

ResultMultiNumericItemView::ResultMultiNumericItemView() : Gtk::Box(Gtk::ORIENTATION_HORIZONTAL)
{
    setOverlappingSpacing(*this);
    get_style_context()->add_class("ResultMultiNumericItem");
    const ResultCell key("ssgResultKey");
    _key = key.frame;
    pack_start(*key.owner, Gtk::PACK_SHRINK);
    pack_start(_result, Gtk::PACK_SHRINK);
    show_all();
}

void ResultMultiNumericItemView::fill(Zem::IView* key, Zem::IView* result)
{
    showInFrame(*_key, key);
    for (Gtk::Widget* child : _result.get_children())
        _result.remove(*child);
    if (auto* const widget = dynamic_cast<Gtk::Widget*>(result)) {
        _result.pack_start(*widget, Gtk::PACK_SHRINK);
        widget->show();
    }
}

} // namespace ZemTree
