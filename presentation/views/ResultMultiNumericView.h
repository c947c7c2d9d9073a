#pragma once

#include "presentation/views/IResultMultiNumericView.h"

#include <gtkmm/box.h>

namespace ZemTree {

// The item rows of a multi numeric result, one above the other.
class ResultMultiNumericView : public Gtk::Box, public IResultMultiNumericView {
public:
    ResultMultiNumericView();
    ResultMultiNumericView(const ResultMultiNumericView&) = delete;
    ResultMultiNumericView& operator=(const ResultMultiNumericView&) = delete;

    void setItems(const std::vector<Zem::IPresenter*>& items) override;
};

} // namespace ZemTree
