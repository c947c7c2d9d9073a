#include "presentation/presenters/ResultMultiNumericItemPresenter.h"

#include "presentation/presenters/ResultNumericPresenter.h"
#include "presentation/presenters/TextPresenter.h"
#include "presentation/views/ResultMultiNumericItemView.h"

namespace ZemTree {

class ResultMultiNumericItemPresenter::Impl {
public:
    explicit Impl(const std::pair<std::string, ResultNumeric>& pair)
        : item(pair), key(item.first.empty() ? std::string("-") : item.first, false), result(&item.second)
    {
    }

    std::pair<std::string, ResultNumeric> item;
    TextPresenter key;
    ResultNumericPresenter result;
};

ResultMultiNumericItemPresenter::ResultMultiNumericItemPresenter(const std::pair<std::string, ResultNumeric>& item)
    : _impl(std::make_unique<Impl>(item))
{
}

ResultMultiNumericItemPresenter::~ResultMultiNumericItemPresenter() = default;

std::unique_ptr<IResultMultiNumericItemView> ResultMultiNumericItemPresenter::_createDefaultView()
{
    return std::make_unique<ResultMultiNumericItemView>();
}

void ResultMultiNumericItemPresenter::_onViewInited()
{
    _view->fill(_impl->key.getView(), _impl->result.getView());
}

} // namespace ZemTree
