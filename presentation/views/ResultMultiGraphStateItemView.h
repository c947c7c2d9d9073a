#pragma once

#include "presentation/views/IResultMultiGraphStateItemView.h"

#include <gtkmm/box.h>

namespace Gtk {
class Frame;
}

namespace ZemTree {

// The key cell of a curve, stretched, and its verdict cell in the shared state column.
class ResultMultiGraphStateItemView : public Gtk::Box, public IResultMultiGraphStateItemView {
public:
    ResultMultiGraphStateItemView();
    ResultMultiGraphStateItemView(const ResultMultiGraphStateItemView&) = delete;
    ResultMultiGraphStateItemView& operator=(const ResultMultiGraphStateItemView&) = delete;

    void fill(Zem::IView* key, Zem::IView* state) override;

private:
    Gtk::Frame* _key;
    Gtk::Frame* _state;
};

} // namespace ZemTree
