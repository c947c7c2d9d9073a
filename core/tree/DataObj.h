#pragma once

#include "core/common/ConvertionHelper.h"
#include "core/tree/IDataContainer.h"

#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>

namespace ZemTree {

// A copy of one value of type T, handed to whoever does not know T (formulas, presenters).
template <class T> class DataObj : public IDataContainer {
public:
    explicit DataObj(T value) : _value(std::move(value)) {}

    const T& get() const { return _value; }

    const std::type_info& getType() const override { return typeid(T); }
    const void* getData() const override { return &_value; }

    // A type without a text form answers false; other failures of the conversion pass through.
    bool tryConvertToString(std::string& out) const override
    {
        try {
            out = Zem::toText(_value);
            return true;
        }
        catch (const std::logic_error&) {
            return false;
        }
    }

private:
    T _value;
};

} // namespace ZemTree
