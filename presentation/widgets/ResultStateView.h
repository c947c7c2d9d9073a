#pragma once

#include "presentation/widgets/IResultStateView.h"

#include <gtkmm/label.h>

namespace Zem {

// A label whose style class follows the verdict. The text names the verdict itself, so the cell reads the same
// without colour.
class ResultStateView : public Gtk::Label, public IResultStateView {
public:
    ResultStateView();
    ResultStateView(const ResultStateView&) = delete;
    ResultStateView& operator=(const ResultStateView&) = delete;

    void setText(const std::string& text) override;
    void setTooltip(const std::string& tooltip) override;
    void setState(const Nullable<bool>& state) override;

    static constexpr const char* okClass = "ResultStateOk";
    static constexpr const char* notOkClass = "ResultStateNotOk";
    static constexpr const char* notTestedClass = "ResultStateNotTested";
};

} // namespace Zem
