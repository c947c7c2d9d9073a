#include "presentation/presenters/ResultMultiGraphStateItemPresenter.h"

#include "presentation/presenters/ResultStatePresenter.h"
#include "presentation/presenters/TextPresenter.h"
#include "presentation/views/ResultMultiGraphStateItemView.h"

namespace ZemTree {

class ResultMultiGraphStateItemPresenter::Impl {
public:
    explicit Impl(const std::pair<std::string, ResultGraph>& pair)
        : item(pair), key(item.first.empty() ? std::string("-") : item.first, false), result(&item.second)
    {
    }

    std::pair<std::string, ResultGraph> item;
    TextPresenter key;
    ResultStatePresenter result;
};

ResultMultiGraphStateItemPresenter::ResultMultiGraphStateItemPresenter(const std::pair<std::string, ResultGraph>& item)
    : _impl(std::make_unique<Impl>(item))
{
}

ResultMultiGraphStateItemPresenter::~ResultMultiGraphStateItemPresenter() = default;

std::unique_ptr<IResultMultiGraphStateItemView> ResultMultiGraphStateItemPresenter::_createDefaultView()
{
    return std::make_unique<ResultMultiGraphStateItemView>();
}

void ResultMultiGraphStateItemPresenter::_onViewInited()
{
    _view->fill(_impl->key.getView(), _impl->result.getView());
}

} // namespace ZemTree
