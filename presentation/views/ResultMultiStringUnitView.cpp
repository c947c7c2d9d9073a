#include "presentation/views/ResultMultiStringUnitView.h"

#include "presentation/views/ResultCell.h"
#include "presentation/widgets/MakeManaged.h"
#include "presentation/widgets/SharedSizeGroupOwner.h"

#include <gtkmm/frame.h>

namespace ZemTree {

ResultMultiStringUnitView::ResultMultiStringUnitView() : _box(Gtk::ORIENTATION_HORIZONTAL)
{
    get_style_context()->add_class("ResultMultiStringUnitView");
    setOverlappingSpacing(_box);
    auto* const unit = Zem::make_managed<Zem::SharedSizeGroupOwner>("ssgResultUnit");
    unit->add(_box);
    auto* const measureCell = Zem::make_managed<Zem::SharedSizeGroupOwner>("ssgMeasure");
    auto* const frame = Zem::make_managed<Gtk::Frame>();
    for (const char* name : {"textAreaPadding", "standartSize", "DefaultControlBorder"})
        frame->get_style_context()->add_class(name);
    frame->set_shadow_type(Gtk::SHADOW_NONE);
    frame->set_hexpand(false);
    measureCell->add(*frame);
    _box.pack_end(*measureCell, Gtk::PACK_SHRINK);
    add(*unit);
    show_all();
}

void ResultMultiStringUnitView::fill(Zem::IView* result)
{
    if (_result)
        _box.remove(*_result);
    _result = dynamic_cast<Gtk::Widget*>(result);
    if (_result) {
        _box.pack_start(*_result, Gtk::PACK_EXPAND_WIDGET);
        _result->show();
    }
}

} // namespace ZemTree
