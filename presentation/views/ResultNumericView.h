#pragma once

#include "presentation/views/IResultNumericView.h"

#include <gtkmm/bin.h>
#include <gtkmm/box.h>

namespace Gtk {
class Frame;
}

namespace ZemTree {

// Setting, measurement (value and deviation) and state as cells of the shared result columns.
class ResultNumericView : public Gtk::Bin, public IResultNumericView {
public:
    ResultNumericView();
    ResultNumericView(const ResultNumericView&) = delete;
    ResultNumericView& operator=(const ResultNumericView&) = delete;

    void fill(Zem::IView* setting, Zem::IView* measurement, Zem::IView* deviation, Zem::IView* state) override;

private:
    Gtk::Box _box;
    Gtk::Box _measurmentBox;
    Gtk::Frame* _setting;
    Gtk::Frame* _measurment;
    Gtk::Frame* _deviation;
    Gtk::Frame* _state;
};

} // namespace ZemTree
