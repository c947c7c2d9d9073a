#include "presentation/views/ResultMultiGraphStateItemView.h"

#include "presentation/views/ResultCell.h"
#include "presentation/widgets/SharedSizeGroupOwner.h"

namespace ZemTree {

ResultMultiGraphStateItemView::ResultMultiGraphStateItemView() : Gtk::Box(Gtk::ORIENTATION_HORIZONTAL)
{
    setOverlappingSpacing(*this);
    get_style_context()->add_class("ResultMultiGraphStateItemView");
    const ResultCell key("ssgResultKey");
    const ResultCell state("ssgResultState");
    _key = key.frame;
    _state = state.frame;
    pack_start(*key.owner, Gtk::PACK_EXPAND_WIDGET);
    pack_end(*state.owner, Gtk::PACK_SHRINK);
    show_all();
}

void ResultMultiGraphStateItemView::fill(Zem::IView* key, Zem::IView* state)
{
    showInFrame(*_key, key);
    showInFrame(*_state, state);
}

} // namespace ZemTree
