#include "presentation/presenters/ResultMultiNumericPresenter.h"

#include "presentation/presenters/ResultItemRows.h"
#include "presentation/presenters/ResultMultiNumericItemPresenter.h"
#include "presentation/views/ResultMultiNumericView.h"
#include "results/ResultMultiNumeric.h"

namespace ZemTree {

class ResultMultiNumericPresenter::Impl {
public:
    ResultItemRows<ResultMultiNumeric, ResultNumeric, ResultMultiNumericItemPresenter> rows;
};

ResultMultiNumericPresenter::ResultMultiNumericPresenter(const ResultMultiNumeric* result)
    : _impl(std::make_unique<Impl>())
{
    _impl->rows.update(result);
}

ResultMultiNumericPresenter::~ResultMultiNumericPresenter() = default;

void ResultMultiNumericPresenter::setResult(const ResultMultiNumeric* result)
{
    _impl->rows.update(result);
    if (_isViewInited)
        _view->setItems(_impl->rows.get());
}

std::vector<Zem::IPresenter*> ResultMultiNumericPresenter::getItems() const
{
    return _impl->rows.get();
}

std::unique_ptr<IResultMultiNumericView> ResultMultiNumericPresenter::_createDefaultView()
{
    return std::make_unique<ResultMultiNumericView>();
}

void ResultMultiNumericPresenter::_onViewInited()
{
    _view->setItems(_impl->rows.get());
}

} // namespace ZemTree
