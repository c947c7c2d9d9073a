#include "core/formula/ValueExpression.h"

#include "core/tree/DataObj.h"

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace Formula {

ValueExpression::ValueExpression(double value) : _kind(Kind::Number), _number(value) {}

ValueExpression::ValueExpression(std::string value) : _kind(Kind::Text), _text(std::move(value)) {}

ValueExpression::ValueExpression(std::shared_ptr<ZemTree::IDataContainer> value)
    : _kind(Kind::Object), _object(std::move(value))
{
}

std::shared_ptr<ValueExpression> ValueExpression::number(double value)
{
    return std::shared_ptr<ValueExpression>(new ValueExpression(value));
}

std::shared_ptr<ValueExpression> ValueExpression::text(std::string value)
{
    return std::shared_ptr<ValueExpression>(new ValueExpression(std::move(value)));
}

std::shared_ptr<ValueExpression> ValueExpression::object(std::shared_ptr<ZemTree::IDataContainer> value)
{
    if (value == nullptr)
        throw std::logic_error("A formula object value needs data");
    return std::shared_ptr<ValueExpression>(new ValueExpression(std::move(value)));
}

double ValueExpression::getNumber() const
{
    if (_kind != Kind::Number)
        throw std::logic_error("The formula value is not a number");
    return _number;
}

const std::string& ValueExpression::getText() const
{
    if (_kind != Kind::Text)
        throw std::logic_error("The formula value is not a text");
    return _text;
}

std::shared_ptr<ZemTree::IDataContainer> ValueExpression::getDataContainer() const
{
    switch (_kind) {
    case Kind::Number:
        return std::make_shared<ZemTree::DataObj<double>>(_number);
    case Kind::Text:
        return std::make_shared<ZemTree::DataObj<std::string>>(_text);
    case Kind::Object:
        break;
    }
    return _object;
}

bool ValueExpression::tryConvertToString(std::string& out) const
{
    switch (_kind) {
    case Kind::Number:
        out = numberToText(_number);
        return true;
    case Kind::Text:
        out = _text;
        return true;
    case Kind::Object:
        break;
    }
    return _object->tryConvertToString(out);
}

std::string ValueExpression::numberToText(double value)
{
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value < 0.0 ? "-inf" : "inf";
    // to_chars without a format gives the shortest text that reads back exactly, in no locale at all.
    char buffer[64];
    const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof(buffer), value);
    return std::string(buffer, result.ptr);
}

} // namespace Formula
