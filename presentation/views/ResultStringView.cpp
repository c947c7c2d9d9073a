#include "presentation/views/ResultStringView.h"

#include "presentation/views/ResultCell.h"
#include "presentation/widgets/SharedSizeGroupOwner.h"

namespace ZemTree {

ResultStringView::ResultStringView() : _box(Gtk::ORIENTATION_HORIZONTAL)
{
    setOverlappingSpacing(_box);
    _box.get_style_context()->add_class("ResultString");
    const ResultCell setting("ssgResultSetting");
    const ResultCell measurment("ssgResultMeasurment");
    const ResultCell state("ssgResultState");
    _setting = setting.frame;
    _measurment = measurment.frame;
    _state = state.frame;
    _box.pack_start(*setting.owner, Gtk::PACK_SHRINK);
    _box.pack_start(*measurment.owner, Gtk::PACK_SHRINK);
    _box.pack_start(*state.owner, Gtk::PACK_SHRINK);
    add(_box);
    show_all();
}

void ResultStringView::fill(Zem::IView* setting, Zem::IView* measurement, Zem::IView* state)
{
    showInFrame(*_setting, setting);
    showInFrame(*_measurment, measurement);
    showInFrame(*_state, state);
}

} // namespace ZemTree
