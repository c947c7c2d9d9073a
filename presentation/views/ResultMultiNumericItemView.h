#pragma once

#include "presentation/views/IResultMultiNumericItemView.h"

#include <gtkmm/box.h>

namespace Gtk {
class Frame;
}

namespace ZemTree {

// The key cell of an item, then its result row.
class ResultMultiNumericItemView : public Gtk::Box, public IResultMultiNumericItemView {
public:
    ResultMultiNumericItemView();
    ResultMultiNumericItemView(const ResultMultiNumericItemView&) = delete;
    ResultMultiNumericItemView& operator=(const ResultMultiNumericItemView&) = delete;

    void fill(Zem::IView* key, Zem::IView* result) override;

private:
    Gtk::Frame* _key;
    Gtk::Box _result;
};

} // namespace ZemTree
