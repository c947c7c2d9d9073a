#include "core/tree/StringUnit.h"

#include "core/common/XmlInclude.h"

namespace ZemTree {

namespace {

// Users add these below open sections, so a reader must be able to rebuild them.
const char* const valueAttribute = "Value";

} // namespace

StringUnit::StringUnit(const std::string& id, const LocalString& description, const LocalString& secondText,
                       const std::string& value)
    : Unitable(id, description, secondText), _value(value)
{
}

void StringUnit::setValue(const std::string& value)
{
    if (_value == value)
        return;
    _value = value;
    _signalValueChanged.emit(this);
}

void StringUnit::_setExtendedXml(xmlpp::Element* own, const SerializationMode& mode)
{
    Unitable::_setExtendedXml(own, mode);
    if (const xmlpp::Attribute* const value = own->get_attribute(valueAttribute))
        setValue(value->get_value());
}

void StringUnit::_getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const
{
    Unitable::_getExtendedXml(own, mode);
    own->set_attribute(valueAttribute, _value);
}

xmlpp::Element* StringUnit::_getDisplayXmlCurrent(DisplayXmlParameters& parameters, xmlpp::Element* parent) const
{
    xmlpp::Element* const own = Unitable::_getDisplayXmlCurrent(parameters, parent);
    if (own != nullptr)
        own->set_attribute(valueAttribute, _value);
    return own;
}

} // namespace ZemTree
