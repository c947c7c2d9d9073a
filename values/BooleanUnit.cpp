#include "values/BooleanUnit.h"

#include "core/tree/TreeLocalization.h"

#include <stdexcept>

namespace ZemTree {

namespace {

const char* const dataAttribute = "Data";
const char* const valueAttribute = "Value";

} // namespace

BooleanUnit::BooleanUnit(const std::string& id, const LocalString& description, const LocalString& secondText,
                         bool defaultData)
    : Unit<bool>(id, description, secondText, defaultData)
{
}

BooleanUnit::BooleanUnit(const std::string& id) : BooleanUnit(id, LocalString(id), LocalString::Empty(), false) {}

BooleanUnit::BooleanUnit() : BooleanUnit("BooleanUnit") {}

std::string BooleanUnit::displayText(bool flag)
{
    return lng::Tree::get(flag ? "Flag.yes" : "Flag.no");
}

// Hand-edited files may spell a flag as a number or capitalised.
bool BooleanUnit::_createDataFromXml(xmlpp::Element* element) const
{
    const xmlpp::Attribute* const data = element->get_attribute(dataAttribute);
    if (data == nullptr)
        throw std::runtime_error("Flag " + getId() + " has no Data");
    const std::string text = data->get_value();
    if (text == "true" || text == "True" || text == "1")
        return true;
    if (text == "false" || text == "False" || text == "0")
        return false;
    throw std::runtime_error("Flag " + getId() + " is neither true nor false: " + text);
}

void BooleanUnit::_getDataXml(const bool& data, xmlpp::Element* element) const
{
    element->set_attribute(dataAttribute, data ? "true" : "false");
}

void BooleanUnit::_getDisplayXmlCurrentValue(DisplayXmlParameters& /*parameters*/, xmlpp::Element* element) const
{
    element->set_attribute(valueAttribute, displayText(getValueOut().value));
}

} // namespace ZemTree
