#include "presentation/presenters/ResultMultiStringPresenter.h"

#include "presentation/presenters/ResultMultiStringItemPresenter.h"
#include "presentation/views/ResultMultiStringView.h"
#include "results/ResultMultiString.h"

#include <vector>

namespace ZemTree {

class ResultMultiStringPresenter::Impl {
public:
    void _updateItemCollectionPresenter(const ResultMultiString* result)
    {
        items.clear();
        if (!result || result->_items.empty()) {
            items.push_back(
                std::make_unique<ResultMultiStringItemPresenter>(std::make_pair(std::string("-"), ResultString())));
            return;
        }
        for (const auto& item : result->_items)
            items.push_back(std::make_unique<ResultMultiStringItemPresenter>(item));
    }

    std::vector<Zem::IPresenter*> getItems() const
    {
        std::vector<Zem::IPresenter*> raw;
        raw.reserve(items.size());
        for (const auto& item : items)
            raw.push_back(item.get());
        return raw;
    }

    std::vector<std::unique_ptr<ResultMultiStringItemPresenter>> items;
};

ResultMultiStringPresenter::ResultMultiStringPresenter(const ResultMultiString* result)
    : _impl(std::make_unique<Impl>())
{
    _impl->_updateItemCollectionPresenter(result);
}

ResultMultiStringPresenter::~ResultMultiStringPresenter() = default;

void ResultMultiStringPresenter::setResult(const ResultMultiString* result)
{
    _impl->_updateItemCollectionPresenter(result);
    if (_isViewInited)
        _view->setItems(_impl->getItems());
}

std::vector<Zem::IPresenter*> ResultMultiStringPresenter::getItems() const
{
    return _impl->getItems();
}

std::unique_ptr<IResultMultiStringView> ResultMultiStringPresenter::_createDefaultView()
{
    return std::make_unique<ResultMultiStringView>();
}

void ResultMultiStringPresenter::_onViewInited()
{
    _view->setItems(_impl->getItems());
}

} // namespace ZemTree
