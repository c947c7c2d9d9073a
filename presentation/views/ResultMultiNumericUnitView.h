#pragma once

#include "presentation/views/IResultMultiNumericUnitView.h"

#include <gtkmm/bin.h>
#include <gtkmm/box.h>
#include <gtkmm/label.h>

namespace ZemTree {

// The result block of a unit in its shared column, the unit of measure in a column of its own beside it.
class ResultMultiNumericUnitView : public Gtk::Bin, public IResultMultiNumericUnitView {
public:
    ResultMultiNumericUnitView();
    ResultMultiNumericUnitView(const ResultMultiNumericUnitView&) = delete;
    ResultMultiNumericUnitView& operator=(const ResultMultiNumericUnitView&) = delete;

    void fill(Zem::IView* result) override;
    void setMeasure(const std::string& measure) override;

private:
    Gtk::Box _box;
    Gtk::Widget* _result = nullptr;
    Gtk::Label _measure;
};

} // namespace ZemTree
