#pragma once

#include "core/common/ConvertionHelper.h"
#include "core/common/Out.h"
#include "core/tree/DataObj.h"
#include "core/tree/PropertyBase.h"

#include <cmath>
#include <memory>
#include <string>
#include <type_traits>

namespace ZemTree {

// A property of type T. Offers the reading side of a value too (`getData`, `setData`, `getValueOut`), so that
// a unit reads its properties as it reads values.
template <class T> class TypedProperty : public PropertyBase {
public:
    const T& getValue() const { return _valueOut.value; }
    // Compares first; on a change stores, then emits the value-out signal and the value signal.
    void setValue(const T& value)
    {
        if (_isSame(_valueOut.value, value))
            return;
        _valueOut.value = value;
        _emitValueChanged();
    }

    const T& getData() const { return getValue(); }
    void setData(const T& value) { setValue(value); }
    const Zem::Out<T>& getValueOut() const { return _valueOut; }

    std::shared_ptr<IDataContainer> getValueObject() const override
    {
        return std::make_shared<DataObj<T>>(_valueOut.value);
    }

protected:
    TypedProperty(const std::string& id, const LocalString& description, const LocalString& secondText, T value)
        : PropertyBase(id, description, secondText)
    {
        _valueOut.value = value;
    }

    std::string _getValueText() const override { return Zem::toText(_valueOut.value); }
    bool _trySetValueText(const std::string& text) override
    {
        T read = _valueOut.value;
        if (!Zem::fromText(text, read))
            return false;
        setValue(read);
        return true;
    }

private:
    // Two NaNs are the same value, so that setting NaN again is no change.
    static bool _isSame(const T& a, const T& b)
    {
        if constexpr (std::is_floating_point_v<T>)
            return a == b || (std::isnan(a) && std::isnan(b));
        else
            return a == b;
    }

    Zem::Out<T> _valueOut;
};

} // namespace ZemTree
