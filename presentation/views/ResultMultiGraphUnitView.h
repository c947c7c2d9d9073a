#pragma once

#include "presentation/views/IResultMultiGraphUnitView.h"

#include <gtkmm/box.h>
#include <gtkmm/frame.h>

namespace ZemTree {

// A graph result unit in the value column: a frame that takes the verdicts of its curves.
class ResultMultiGraphUnitView : public Gtk::Box, public IResultMultiGraphUnitView {
public:
    ResultMultiGraphUnitView();
    ResultMultiGraphUnitView(const ResultMultiGraphUnitView&) = delete;
    ResultMultiGraphUnitView& operator=(const ResultMultiGraphUnitView&) = delete;

    void setStateArea(Zem::IView* state) override;

private:
    Gtk::Frame _stateArea;
};

} // namespace ZemTree
