#pragma once

#include "presentation/views/IResultMultiStringView.h"

#include <gtkmm/box.h>

namespace ZemTree {

// The item rows of a multi string result, one above the other.
class ResultMultiStringView : public Gtk::Box, public IResultMultiStringView {
public:
    ResultMultiStringView();
    ResultMultiStringView(const ResultMultiStringView&) = delete;
    ResultMultiStringView& operator=(const ResultMultiStringView&) = delete;

    void setItems(const std::vector<Zem::IPresenter*>& items) override;
};

} // namespace ZemTree
