#include "presentation/presenters/ExternalEnumLimiterPresenter.h"

#include "presentation/views/EnumStorageView.h"

#include <algorithm>

namespace ZemTree {

void ExternalEnumLimiterPresenter::addLimiterValue(const std::string& value, const std::string& description,
                                                   std::size_t position, const Zem::Nullable<std::string>& icon)
{
    const std::string iconName = icon.getValueOr(std::string());
    const auto found = _find(value);
    if (found != _items.end()) {
        const auto index = static_cast<std::size_t>(found - _items.begin());
        if (found->description == description && found->icon == iconName)
            return;
        _items[index].description = description;
        _items[index].icon = iconName;
        if (IEnumStorageView* const view = _getTypedView()) {
            view->removeValue(value);
            view->insertValue(value, description, iconName, index);
        }
        _signalChanged.emit();
        return;
    }
    const std::size_t index = std::min(position, _items.size());
    _items.insert(_items.begin() + static_cast<std::ptrdiff_t>(index), Item{value, description, iconName});
    if (IEnumStorageView* const view = _getTypedView())
        view->insertValue(value, description, iconName, index);
    _signalChanged.emit();
}

void ExternalEnumLimiterPresenter::removeLimiterValue(const std::string& value)
{
    const auto found = _find(value);
    if (found == _items.end())
        return;
    _items.erase(found);
    if (IEnumStorageView* const view = _getTypedView())
        view->removeValue(value);
    _signalChanged.emit();
}

void ExternalEnumLimiterPresenter::clearLimiterValues()
{
    if (_items.empty())
        return;
    _items.clear();
    if (IEnumStorageView* const view = _getTypedView())
        view->clearValues();
    _signalChanged.emit();
}

bool ExternalEnumLimiterPresenter::hasValue(const std::string& value) const
{
    return _find(value) != _items.end();
}

std::string ExternalEnumLimiterPresenter::getDescription(const std::string& value) const
{
    const auto found = _find(value);
    return found != _items.end() ? found->description : std::string();
}

std::unique_ptr<IEnumStorageView> ExternalEnumLimiterPresenter::_createDefaultView()
{
    return std::make_unique<EnumStorageView>();
}

void ExternalEnumLimiterPresenter::_onViewInited()
{
    IEnumStorageView* const view = _getTypedView();
    view->clearValues();
    for (std::size_t index = 0; index < _items.size(); ++index)
        view->insertValue(_items[index].value, _items[index].description, _items[index].icon, index);
}

std::vector<ExternalEnumLimiterPresenter::Item>::const_iterator
ExternalEnumLimiterPresenter::_find(const std::string& value) const
{
    return std::find_if(_items.begin(), _items.end(), [&value](const Item& item) { return item.value == value; });
}

} // namespace ZemTree
