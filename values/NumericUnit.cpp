#include "values/NumericUnit.h"

#include "core/common/ConvertionHelper.h"
#include "core/tree/Measure.h"
#include "core/tree/MeasureProperty.h"
#include "core/tree/Measures.h"
#include "core/tree/TreeLocalization.h"
#include "core/tree/ValueErrors.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <stdexcept>

namespace ZemTree {

namespace {

const char* const dataAttribute = "Data";
const char* const valueAttribute = "Value";
const char* const measureAttribute = "Measure";

} // namespace

NumericUnit::NumericUnit(const std::string& id, const LocalString& description, const LocalString& secondText,
                         double defaultData, Measure* measure)
    : Unit<double>(id, description, secondText, defaultData),
      _measure(std::make_unique<MeasureProperty>(
          "Measure", LocalString(std::string(lng::Tree::get("Properties.Measure"))), LocalString::Empty(), measure))
{
}

NumericUnit::NumericUnit(const std::string& id) : NumericUnit(id, LocalString(id), LocalString::Empty(), 0.0) {}

NumericUnit::NumericUnit() : NumericUnit("NumericUnit") {}

NumericUnit::~NumericUnit() = default;

Measure* NumericUnit::getMeasure() const
{
    return _measure->getValue();
}

void NumericUnit::setMeasure(Measure* measure)
{
    _measure->setValue(measure);
}

void NumericUnit::setBounds(const Zem::Nullable<double>& minimum, const Zem::Nullable<double>& maximum)
{
    if (minimum && maximum && minimum.getValue() > maximum.getValue())
        throw std::logic_error("The minimum of " + getId() + " exceeds its maximum");
    if (minimum == _minimum && maximum == _maximum)
        return;
    _minimum = minimum;
    _maximum = maximum;
    _onValueOutChanged();
}

void NumericUnit::setPrecision(int precision)
{
    if (precision < 0 || precision > 15)
        throw std::logic_error("The precision of " + getId() + " must be 0 to 15");
    _precision = precision;
}

std::string NumericUnit::getDisplayValue() const
{
    return formatNumber(getValueOut().value, _precision);
}

std::string NumericUnit::formatNumber(double number, int precision)
{
    if (!std::isfinite(number))
        return Zem::convertToString<double, true>(number);
    char buffer[400];
    const std::to_chars_result written =
        std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed, precision);
    std::string text(buffer, written.ec == std::errc() ? written.ptr : buffer);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
    }
    if (text == "-0")
        text = "0";
    return text;
}

// A bound is judged on what is seen, so a formula that leaves the range shows it as well as typed data does.
std::unique_ptr<Zem::Out<double>> NumericUnit::_coerceValueOut(std::unique_ptr<Zem::Out<double>> out) const
{
    if (out->error)
        return out;
    const double value = out->value;
    const bool below = _minimum && value < _minimum.getValue();
    const bool above = _maximum && value > _maximum.getValue();
    if (!below && !above)
        return out;
    const std::string low = _minimum ? formatNumber(_minimum.getValue(), 15) : std::string("-∞");
    const std::string high = _maximum ? formatNumber(_maximum.getValue(), 15) : std::string("∞");
    out->error = std::make_shared<OutOfRangeError>(formatNumber(value, 15) + " is outside [" + low + "; " + high + "]");
    return out;
}

// A number that is not finite ("inf", "nan", or "1e999" beyond the range of a double) is refused with one text,
// as nothing judged against it could pass or fail honestly.
double NumericUnit::_createDataFromXml(xmlpp::Element* element) const
{
    const xmlpp::Attribute* const data = element->get_attribute(dataAttribute);
    if (data == nullptr)
        throw std::runtime_error("Setting " + getId() + " has no Data");
    const std::string text = data->get_value();
    double value = 0.0;
    if (Zem::fromText(text, value) && std::isfinite(value))
        return value;
    if (_looksLikeNumber(text))
        throw std::runtime_error("Setting " + getId() + " is not a finite number: " + text);
    throw std::runtime_error("Setting " + getId() + " is not a number: " + text);
}

bool NumericUnit::_looksLikeNumber(const std::string& text)
{
    std::string lower;
    for (const char c : text)
        lower += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    const std::string magnitude = !lower.empty() && (lower[0] == '-' || lower[0] == '+') ? lower.substr(1) : lower;
    if (magnitude == "inf" || magnitude == "infinity" || magnitude == "nan")
        return true;
    return magnitude.find_first_not_of("0123456789.e+-") == std::string::npos
           && magnitude.find_first_of("0123456789") != std::string::npos;
}

void NumericUnit::_getDataXml(const double& data, xmlpp::Element* element) const
{
    element->set_attribute(dataAttribute, Zem::convertToString<double, true>(data));
}

void NumericUnit::_getDisplayXmlCurrentValue(DisplayXmlParameters& /*parameters*/, xmlpp::Element* element) const
{
    element->set_attribute(valueAttribute, getDisplayValue());
    if (Measure* const measure = getMeasure(); measure != nullptr && measure != Measures::None())
        element->set_attribute(measureAttribute, measure->getDescription());
}

} // namespace ZemTree
