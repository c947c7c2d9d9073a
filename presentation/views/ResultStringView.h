#pragma once

#include "presentation/views/IResultStringView.h"

#include <gtkmm/bin.h>
#include <gtkmm/box.h>

namespace Gtk {
class Frame;
}

namespace ZemTree {

// Setting, measurement and state as cells of the shared result columns.
class ResultStringView : public Gtk::Bin, public IResultStringView {
public:
    ResultStringView();
    ResultStringView(const ResultStringView&) = delete;
    ResultStringView& operator=(const ResultStringView&) = delete;

    void fill(Zem::IView* setting, Zem::IView* measurement, Zem::IView* state) override;

private:
    Gtk::Box _box;
    Gtk::Frame* _setting;
    Gtk::Frame* _measurment;
    Gtk::Frame* _state;
};

} // namespace ZemTree
