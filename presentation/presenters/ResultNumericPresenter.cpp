#include "presentation/presenters/ResultNumericPresenter.h"

#include "presentation/presenters/ResultStatePresenter.h"
#include "presentation/presenters/ResultTexts.h"
#include "presentation/presenters/TextPresenter.h"
#include "presentation/views/ResultNumericView.h"
#include "results/ResultNumeric.h"

namespace ZemTree {

class ResultNumericPresenter::Impl {
public:
    Impl(const ResultNumeric* result, const ResultTexts& texts)
        : setting(texts.setting, true), measurment(texts.measurment, false), deviation(texts.deviation, false),
          state(result)
    {
    }

    TextPresenter setting;
    TextPresenter measurment;
    TextPresenter deviation;
    ResultStatePresenter state;
};

ResultNumericPresenter::ResultNumericPresenter(const ResultNumeric* result)
    : _impl(std::make_unique<Impl>(result, ResultTexts::of(result)))
{
}

ResultNumericPresenter::~ResultNumericPresenter() = default;

std::unique_ptr<IResultNumericView> ResultNumericPresenter::_createDefaultView()
{
    return std::make_unique<ResultNumericView>();
}

void ResultNumericPresenter::_onViewInited()
{
    _view->fill(_impl->setting.getView(), _impl->measurment.getView(), _impl->deviation.getView(),
                _impl->state.getView());
}

} // namespace ZemTree
