#pragma once

#include "presentation/views/IResultMultiGraphStateView.h"

#include <gtkmm/box.h>

namespace ZemTree {

// The verdict rows of the curves of a graph result, one above the other.
class ResultMultiGraphStateView : public Gtk::Box, public IResultMultiGraphStateView {
public:
    ResultMultiGraphStateView();
    ResultMultiGraphStateView(const ResultMultiGraphStateView&) = delete;
    ResultMultiGraphStateView& operator=(const ResultMultiGraphStateView&) = delete;

    void setItems(const std::vector<Zem::IPresenter*>& items) override;
};

} // namespace ZemTree
