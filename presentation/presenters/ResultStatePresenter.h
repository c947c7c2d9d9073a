#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/widgets/IResultStateView.h"

#include <string>

namespace ZemTree {

class ResultBase;

// The verdict cell of one result. It is shown once and never changes, so the view is made and filled at once.
class ResultStatePresenter : public Zem::PresenterBase<Zem::IResultStateView> {
public:
    // `result` may be null: the cell then says "not tested". The result is read here only.
    explicit ResultStatePresenter(const ResultBase* result);

    // The cell's text and tooltip for a state description: a text with a line feed before its end shows its
    // first line and keeps the whole as the tooltip.
    static void splitDescription(const std::string& description, std::string& text, std::string& tooltip);

protected:
    std::unique_ptr<Zem::IResultStateView> _createDefaultView() override;
};

} // namespace ZemTree
