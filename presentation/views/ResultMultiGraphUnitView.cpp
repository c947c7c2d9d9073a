#include "presentation/views/ResultMultiGraphUnitView.h"

#include "presentation/views/ResultCell.h"

namespace ZemTree {

ResultMultiGraphUnitView::ResultMultiGraphUnitView() : Gtk::Box(Gtk::ORIENTATION_HORIZONTAL)
{
    get_style_context()->add_class("ResultMultiGraphUnitView");
    get_style_context()->add_class("InheritControl");
    _stateArea.set_shadow_type(Gtk::SHADOW_NONE);
    pack_start(_stateArea, Gtk::PACK_EXPAND_WIDGET);
    show_all();
}

void ResultMultiGraphUnitView::setStateArea(Zem::IView* state)
{
    showInFrame(_stateArea, state);
}

} // namespace ZemTree
