#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/ITextView.h"

#include <string>

namespace ZemTree {

// A fixed or changing line of text, such as the key or a measured value in a result table.
class TextPresenter : public Zem::PresenterBase<ITextView> {
public:
    // `isWrapped`: long text breaks into lines; otherwise it stays on one line, cut with an ellipsis and shown
    // whole in the tooltip.
    TextPresenter(const std::string& text, bool isWrapped);

    // GUI thread.
    void setText(const std::string& text);
    const std::string& getText() const { return _text; }

protected:
    std::unique_ptr<ITextView> _createDefaultView() override;
    void _onViewInited() override;

private:
    std::string _text;
    bool _isWrapped;
};

} // namespace ZemTree
