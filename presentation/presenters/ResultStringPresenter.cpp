#include "presentation/presenters/ResultStringPresenter.h"

#include "presentation/presenters/ResultStatePresenter.h"
#include "presentation/presenters/ResultTexts.h"
#include "presentation/presenters/TextPresenter.h"
#include "presentation/views/ResultStringView.h"
#include "results/ResultString.h"

namespace ZemTree {

class ResultStringPresenter::Impl {
public:
    Impl(const ResultString* result, const ResultTexts& texts)
        : setting(texts.setting, true), measurment(texts.measurment, false), state(result)
    {
    }

    TextPresenter setting;
    TextPresenter measurment;
    ResultStatePresenter state;
};

ResultStringPresenter::ResultStringPresenter(const ResultString* result)
    : _impl(std::make_unique<Impl>(result, ResultTexts::of(result)))
{
}

ResultStringPresenter::~ResultStringPresenter() = default;

std::unique_ptr<IResultStringView> ResultStringPresenter::_createDefaultView()
{
    return std::make_unique<ResultStringView>();
}

void ResultStringPresenter::_onViewInited()
{
    _view->fill(_impl->setting.getView(), _impl->measurment.getView(), _impl->state.getView());
}

} // namespace ZemTree
