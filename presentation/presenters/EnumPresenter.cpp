#include "presentation/presenters/EnumPresenter.h"

#include "presentation/presenters/ExternalEnumLimiterPresenter.h"
#include "presentation/views/EnumView.h"

namespace ZemTree {

EnumPresenter::~EnumPresenter() = default;

void EnumPresenter::setData(std::string value)
{
    if (value == _data)
        return;
    _data = std::move(value);
    _updateView();
}

void EnumPresenter::setExternalLimiter(const std::shared_ptr<Zem::IPresenter>& limiter)
{
    if (limiter == _limiterHolder)
        return;
    _limiterHolder = limiter;
    _limiter = dynamic_cast<ExternalEnumLimiterPresenter*>(limiter.get());
    _limiterConnection.disconnect();
    if (_limiter != nullptr)
        _limiterConnection = _limiter->getSignalChanged().connect([this] { _updateView(); });
    if (IEnumView* const view = _getTypedView())
        view->setStorage(_limiter != nullptr ? dynamic_cast<IEnumStorageView*>(_limiter->getView()) : nullptr);
    _updateView();
}

bool EnumPresenter::isValueMissing() const
{
    return _limiter != nullptr && !_data.empty() && !_limiter->hasValue(_data);
}

std::unique_ptr<IEnumView> EnumPresenter::_createDefaultView()
{
    return std::make_unique<EnumView>();
}

void EnumPresenter::_onViewInited()
{
    IEnumView* const view = _getTypedView();
    view->setStorage(_limiter != nullptr ? dynamic_cast<IEnumStorageView*>(_limiter->getView()) : nullptr);
    view->signalValueChosen.connect([this](const std::string& value) { _viewValueChosen(value); });
    _updateView();
}

void EnumPresenter::_updateView()
{
    if (IEnumView* const view = _getIsViewInited() ? _getTypedView() : nullptr)
        view->showValue(_data, isValueMissing());
}

void EnumPresenter::_viewValueChosen(const std::string& value)
{
    if (value == _data)
        return;
    _data = value;
    _updateView();
    signalDataChanged.emit();
}

} // namespace ZemTree
