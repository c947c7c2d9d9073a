#include "relay/SettingUnit.h"

#include "core/common/ConvertionHelper.h"
#include "core/common/XmlInclude.h"
#include "core/tree/NodeFactory.h"
#include "relay/DemoRelayCommon.h"

#include <cctype>
#include <cmath>
#include <stdexcept>

namespace ZemDemo {

namespace {

// Whether `text` is written as a number in the classic locale, whatever its size: "1e999", "-inf", "nan".
bool looksLikeNumber(const std::string& text)
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

} // namespace

SettingUnit::SettingUnit() : SettingUnit("Setting", ZemTree::LocalString::Empty(), 0.0, nullptr) {}

SettingUnit::SettingUnit(const std::string& id, const ZemTree::LocalString& description, double value,
                         ZemTree::Measure* measure)
    : ZemTree::Unit<double>(id, description, ZemTree::LocalString::Empty(), value), _measure(measure)
{
}

double SettingUnit::_createDataFromXml(xmlpp::Element* element) const
{
    const xmlpp::Attribute* const data = element->get_attribute("Data");
    if (data == nullptr)
        throw std::runtime_error("Setting " + getId() + " has no Data");
    const std::string text = data->get_value();
    double value = 0.0;
    if (Zem::fromText(text, value) && std::isfinite(value))
        return value;
    // "inf", "nan" and a number beyond double's range get the one text of a setting that is not finite.
    if (looksLikeNumber(text))
        throw std::runtime_error(notFiniteText(getId(), text));
    throw std::runtime_error("Setting " + getId() + " is not a number: " + text);
}

void SettingUnit::_getDataXml(const double& data, xmlpp::Element* element) const
{
    element->set_attribute("Data", Zem::convertToString<double, true>(data, 6));
}

} // namespace ZemDemo
