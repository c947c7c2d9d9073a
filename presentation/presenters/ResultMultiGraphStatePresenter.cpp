#include "presentation/presenters/ResultMultiGraphStatePresenter.h"

#include "presentation/presenters/ResultItemRows.h"
#include "presentation/presenters/ResultMultiGraphStateItemPresenter.h"
#include "presentation/views/ResultMultiGraphStateView.h"
#include "results/graph/ResultMultiGraph.h"

namespace ZemTree {

class ResultMultiGraphStatePresenter::Impl {
public:
    ResultItemRows<ResultMultiGraph, ResultGraph, ResultMultiGraphStateItemPresenter> rows;
};

ResultMultiGraphStatePresenter::ResultMultiGraphStatePresenter(const ResultMultiGraph* result)
    : _impl(std::make_unique<Impl>())
{
    _impl->rows.update(result);
}

ResultMultiGraphStatePresenter::~ResultMultiGraphStatePresenter() = default;

std::vector<Zem::IPresenter*> ResultMultiGraphStatePresenter::getItems() const
{
    return _impl->rows.get();
}

std::unique_ptr<IResultMultiGraphStateView> ResultMultiGraphStatePresenter::_createDefaultView()
{
    return std::make_unique<ResultMultiGraphStateView>();
}

void ResultMultiGraphStatePresenter::_onViewInited()
{
    _view->setItems(getItems());
}

} // namespace ZemTree
