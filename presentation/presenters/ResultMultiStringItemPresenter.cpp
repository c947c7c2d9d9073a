#include "presentation/presenters/ResultMultiStringItemPresenter.h"

#include "presentation/presenters/ResultStringPresenter.h"
#include "presentation/presenters/TextPresenter.h"
#include "presentation/views/ResultMultiStringItemView.h"

namespace ZemTree {

class ResultMultiStringItemPresenter::Impl {
public:
    explicit Impl(const std::pair<std::string, ResultString>& pair)
        : item(pair), key(item.first.empty() ? std::string("-") : item.first, false), result(&item.second)
    {
    }

    std::pair<std::string, ResultString> item;
    TextPresenter key;
    ResultStringPresenter result;
};

ResultMultiStringItemPresenter::ResultMultiStringItemPresenter(const std::pair<std::string, ResultString>& item)
    : _impl(std::make_unique<Impl>(item))
{
}

ResultMultiStringItemPresenter::~ResultMultiStringItemPresenter() = default;

std::unique_ptr<IResultMultiStringItemView> ResultMultiStringItemPresenter::_createDefaultView()
{
    return std::make_unique<ResultMultiStringItemView>();
}

void ResultMultiStringItemPresenter::_onViewInited()
{
    _view->fill(_impl->key.getView(), _impl->result.getView());
}

} // namespace ZemTree
