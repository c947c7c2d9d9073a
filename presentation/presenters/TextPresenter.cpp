#include "presentation/presenters/TextPresenter.h"

#include "presentation/views/TextView.h"

namespace ZemTree {

TextPresenter::TextPresenter(const std::string& text, bool isWrapped) : _text(text), _isWrapped(isWrapped) {}

void TextPresenter::setText(const std::string& text)
{
    if (text == _text)
        return;
    _text = text;
    if (_isViewInited)
        _view->setText(_text);
}

std::unique_ptr<ITextView> TextPresenter::_createDefaultView()
{
    return std::make_unique<TextView>(_isWrapped);
}

void TextPresenter::_onViewInited()
{
    _view->setText(_text);
}

} // namespace ZemTree
