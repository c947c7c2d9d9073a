#include "presentation/views/ResultNumericView.h"

#include "presentation/views/ResultCell.h"
#include "presentation/widgets/SharedSizeGroupOwner.h"

namespace ZemTree {

ResultNumericView::ResultNumericView() : _box(Gtk::ORIENTATION_HORIZONTAL), _measurmentBox(Gtk::ORIENTATION_HORIZONTAL)
{
    setOverlappingSpacing(_box);
    setOverlappingSpacing(_measurmentBox);
    _box.get_style_context()->add_class("ResultNumeric");
    const ResultCell setting("ssgResultSetting");
    const ResultCell measurment("ssgResultMeasurment");
    const ResultCell value("ssgResultMeasurmentRes");
    const ResultCell deviation("ssgResultDeviation");
    const ResultCell state("ssgResultState");
    _setting = setting.frame;
    _measurment = value.frame;
    _deviation = deviation.frame;
    _state = state.frame;
    _measurmentBox.pack_start(*value.owner, Gtk::PACK_EXPAND_WIDGET);
    _measurmentBox.pack_start(*deviation.owner, Gtk::PACK_SHRINK);
    measurment.frame->add(_measurmentBox);
    _box.pack_start(*setting.owner, Gtk::PACK_SHRINK);
    _box.pack_start(*measurment.owner, Gtk::PACK_SHRINK);
    _box.pack_start(*state.owner, Gtk::PACK_SHRINK);
    add(_box);
    show_all();
}

void ResultNumericView::fill(Zem::IView* setting, Zem::IView* measurement, Zem::IView* deviation, Zem::IView* state)
{
    showInFrame(*_setting, setting);
    showInFrame(*_measurment, measurement);
    showInFrame(*_deviation, deviation);
    showInFrame(*_state, state);
}

} // namespace ZemTree
