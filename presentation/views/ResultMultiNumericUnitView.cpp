#include "presentation/views/ResultMultiNumericUnitView.h"

#include "presentation/views/ResultCell.h"
#include "presentation/widgets/MakeManaged.h"
#include "presentation/widgets/SharedSizeGroupOwner.h"

#include <gtkmm/frame.h>

namespace ZemTree {

ResultMultiNumericUnitView::ResultMultiNumericUnitView() : _box(Gtk::ORIENTATION_HORIZONTAL)
{
    get_style_context()->add_class("ResultMultiNumericUnitView");
    setOverlappingSpacing(_box);
    auto* const unit = Zem::make_managed<Zem::SharedSizeGroupOwner>("ssgResultUnit");
    unit->add(_box);
    auto* const measureCell = Zem::make_managed<Zem::SharedSizeGroupOwner>("ssgMeasure");
    auto* const frame = Zem::make_managed<Gtk::Frame>();
    for (const char* name : {"textAreaPadding", "standartSize", "DefaultControlBorder"})
        frame->get_style_context()->add_class(name);
    frame->set_shadow_type(Gtk::SHADOW_NONE);
    _measure.set_xalign(0.0f);
    frame->add(_measure);
    measureCell->add(*frame);
    _box.pack_end(*measureCell, Gtk::PACK_SHRINK);
    add(*unit);
    show_all();
}

void ResultMultiNumericUnitView::fill(Zem::IView* result)
{
    if (_result)
        _box.remove(*_result);
    _result = dynamic_cast<Gtk::Widget*>(result);
    if (_result) {
        _box.pack_start(*_result, Gtk::PACK_EXPAND_WIDGET);
        _result->show();
    }
}

void ResultMultiNumericUnitView::setMeasure(const std::string& measure)
{
    _measure.set_text(measure);
}

} // namespace ZemTree
