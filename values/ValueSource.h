#pragma once

#include "values/IValueSource.h"

#include <string>

namespace ZemTree {

// The plain store: a passive record without logic, signals or comparison. Deciding what changed is the
// business of the value that uses it.
template <class T> class ValueSource : public virtual IValueSource<T> {
public:
    ValueSource() = default;

    void setIsFormulaSource(bool isFormulaSource) override { _isFormulaSource = isFormulaSource; }
    bool getIsFormulaSource() const override { return _isFormulaSource; }
    void setData(const T& data) override { _data = data; }
    T getNativeData() const override { return _data; }
    void setFormula(const std::string& formula) override { _formula = formula; }
    const std::string& getFormula() const override { return _formula; }

private:
    bool _isFormulaSource = false;
    T _data{};
    std::string _formula;
};

} // namespace ZemTree
