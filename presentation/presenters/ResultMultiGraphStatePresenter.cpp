#include "presentation/presenters/ResultMultiGraphStatePresenter.h"

#include "presentation/presenters/ResultMultiGraphStateItemPresenter.h"
#include "presentation/views/ResultMultiGraphStateView.h"
#include "results/graph/ResultMultiGraph.h"

namespace ZemTree {

class ResultMultiGraphStatePresenter::Impl {
public:
    std::vector<std::unique_ptr<ResultMultiGraphStateItemPresenter>> items;
};

ResultMultiGraphStatePresenter::ResultMultiGraphStatePresenter(const ResultMultiGraph* result)
    : _impl(std::make_unique<Impl>())
{
    if (!result || result->_items.empty()) {
        _impl->items.push_back(
            std::make_unique<ResultMultiGraphStateItemPresenter>(std::make_pair(std::string("-"), ResultGraph())));
        return;
    }
    for (const auto& item : result->_items)
        _impl->items.push_back(std::make_unique<ResultMultiGraphStateItemPresenter>(item));
}

ResultMultiGraphStatePresenter::~ResultMultiGraphStatePresenter() = default;

std::vector<Zem::IPresenter*> ResultMultiGraphStatePresenter::getItems() const
{
    std::vector<Zem::IPresenter*> raw;
    raw.reserve(_impl->items.size());
    for (const auto& item : _impl->items)
        raw.push_back(item.get());
    return raw;
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
