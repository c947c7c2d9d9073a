#pragma once

#include <string>

namespace ZemTree {

// The store behind a value: what was set, as opposed to what is seen. A value can be switched between several
// stores, and can itself stand where a store is expected.
template <class T> class IValueSource {
public:
    // Whether the formula (true) or the data (false) gives the value out.
    virtual void setIsFormulaSource(bool isFormulaSource) = 0;
    virtual bool getIsFormulaSource() const = 0;
    virtual void setData(const T& data) = 0;
    virtual T getNativeData() const = 0;
    virtual void setFormula(const std::string& formula) = 0;
    virtual const std::string& getFormula() const = 0;
    virtual ~IValueSource() = default;
};

} // namespace ZemTree
