#pragma once

#include "presentation/views/IResultMultiStringItemView.h"

#include <gtkmm/box.h>

namespace Gtk {
class Frame;
}

namespace ZemTree {

// The key cell of an item, then its result row.
class ResultMultiStringItemView : public Gtk::Box, public IResultMultiStringItemView {
public:
    ResultMultiStringItemView();
    ResultMultiStringItemView(const ResultMultiStringItemView&) = delete;
    ResultMultiStringItemView& operator=(const ResultMultiStringItemView&) = delete;

    void fill(Zem::IView* key, Zem::IView* result) override;

private:
    Gtk::Frame* _key;
    Gtk::Box _result;
};

} // namespace ZemTree
