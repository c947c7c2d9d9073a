#include "presentation/presenters/ResultMultiNumericPresenter.h"

#include "presentation/presenters/ResultMultiNumericItemPresenter.h"
#include "presentation/views/ResultMultiNumericView.h"
#include "results/ResultMultiNumeric.h"

#include <vector>

namespace ZemTree {

class ResultMultiNumericPresenter::Impl {
public:
    void _updateItemCollectionPresenter(const ResultMultiNumeric* result)
    {
        items.clear();
        if (!result || result->_items.empty()) {
            items.push_back(
                std::make_unique<ResultMultiNumericItemPresenter>(std::make_pair(std::string("-"), ResultNumeric())));
            return;
        }
        for (const auto& item : result->_items)
            items.push_back(std::make_unique<ResultMultiNumericItemPresenter>(item));
    }

    std::vector<Zem::IPresenter*> getItems() const
    {
        std::vector<Zem::IPresenter*> raw;
        raw.reserve(items.size());
        for (const auto& item : items)
            raw.push_back(item.get());
        return raw;
    }

    std::vector<std::unique_ptr<ResultMultiNumericItemPresenter>> items;
};

ResultMultiNumericPresenter::ResultMultiNumericPresenter(const ResultMultiNumeric* result)
    : _impl(std::make_unique<Impl>())
{
    _impl->_updateItemCollectionPresenter(result);
}

ResultMultiNumericPresenter::~ResultMultiNumericPresenter() = default;

void ResultMultiNumericPresenter::setResult(const ResultMultiNumeric* result)
{
    _impl->_updateItemCollectionPresenter(result);
    if (_isViewInited)
        _view->setItems(_impl->getItems());
}

std::vector<Zem::IPresenter*> ResultMultiNumericPresenter::getItems() const
{
    return _impl->getItems();
}

std::unique_ptr<IResultMultiNumericView> ResultMultiNumericPresenter::_createDefaultView()
{
    return std::make_unique<ResultMultiNumericView>();
}

void ResultMultiNumericPresenter::_onViewInited()
{
    _view->setItems(_impl->getItems());
}

} // namespace ZemTree
