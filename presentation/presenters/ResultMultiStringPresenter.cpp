#include "presentation/presenters/ResultMultiStringPresenter.h"

#include "presentation/presenters/ResultItemRows.h"
#include "presentation/presenters/ResultMultiStringItemPresenter.h"
#include "presentation/views/ResultMultiStringView.h"
#include "results/ResultMultiString.h"

namespace ZemTree {

class ResultMultiStringPresenter::Impl {
public:
    ResultItemRows<ResultMultiString, ResultString, ResultMultiStringItemPresenter> rows;
};

ResultMultiStringPresenter::ResultMultiStringPresenter(const ResultMultiString* result)
    : _impl(std::make_unique<Impl>())
{
    _impl->rows.update(result);
}

ResultMultiStringPresenter::~ResultMultiStringPresenter() = default;

void ResultMultiStringPresenter::setResult(const ResultMultiString* result)
{
    _impl->rows.update(result);
    if (_isViewInited)
        _view->setItems(_impl->rows.get());
}

std::vector<Zem::IPresenter*> ResultMultiStringPresenter::getItems() const
{
    return _impl->rows.get();
}

std::unique_ptr<IResultMultiStringView> ResultMultiStringPresenter::_createDefaultView()
{
    return std::make_unique<ResultMultiStringView>();
}

void ResultMultiStringPresenter::_onViewInited()
{
    _view->setItems(_impl->rows.get());
}

} // namespace ZemTree
