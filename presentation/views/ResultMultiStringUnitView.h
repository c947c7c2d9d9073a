#pragma once

#include "presentation/views/IResultMultiStringUnitView.h"

#include <gtkmm/bin.h>
#include <gtkmm/box.h>

namespace ZemTree {

// The result block of a unit in its shared column, with the measure column kept empty so that string rows line
// up with numeric ones.
class ResultMultiStringUnitView : public Gtk::Bin, public IResultMultiStringUnitView {
public:
    ResultMultiStringUnitView();
    ResultMultiStringUnitView(const ResultMultiStringUnitView&) = delete;
    ResultMultiStringUnitView& operator=(const ResultMultiStringUnitView&) = delete;

    void fill(Zem::IView* result) override;

private:
    Gtk::Box _box;
    Gtk::Widget* _result = nullptr;
};

} // namespace ZemTree
