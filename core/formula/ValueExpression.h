#pragma once

#include "core/tree/IDataContainer.h"

#include <memory>
#include <string>

namespace Formula {

// One value of the formula language: a number, a text, or an object of any type that a referenced node gave.
// Immutable; shared between the evaluator's result and whoever reads it.
class ValueExpression {
public:
    enum class Kind { Number, Text, Object };

    static std::shared_ptr<ValueExpression> number(double value);
    static std::shared_ptr<ValueExpression> text(std::string value);
    // Throws std::logic_error for a null container: an object value always has data.
    static std::shared_ptr<ValueExpression> object(std::shared_ptr<ZemTree::IDataContainer> value);

    ValueExpression(const ValueExpression&) = delete;
    ValueExpression& operator=(const ValueExpression&) = delete;

    Kind getKind() const { return _kind; }
    bool isNumber() const { return _kind == Kind::Number; }
    bool isText() const { return _kind == Kind::Text; }
    bool isObject() const { return _kind == Kind::Object; }

    // Throw std::logic_error when the value is of another kind.
    double getNumber() const;
    const std::string& getText() const;

    // The value for a reader that does not know the language: a number as DataObj<double>, a text as
    // DataObj<std::string>, an object as its own container. Never null.
    std::shared_ptr<ZemTree::IDataContainer> getDataContainer() const;

    // The text form: a number in the shortest classic-locale form that reads back to the same double ("nan",
    // "inf" and "-inf" for the special values), a text as it is, an object through its container. False when
    // an object has no text form.
    bool tryConvertToString(std::string& out) const;

    // The shortest classic-locale text of a double that reads back to the same value.
    static std::string numberToText(double value);

private:
    explicit ValueExpression(double value);
    explicit ValueExpression(std::string value);
    explicit ValueExpression(std::shared_ptr<ZemTree::IDataContainer> value);

    Kind _kind;
    double _number = 0.0;
    std::string _text;
    std::shared_ptr<ZemTree::IDataContainer> _object;
};

} // namespace Formula
