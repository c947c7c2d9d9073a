#include "core/tree/EnumItem.h"

#include "core/common/XmlInclude.h"
#include "core/tree/LocalStringTypeConverter.h"

#include <stdexcept>

namespace ZemTree {

namespace {

const char* const valueAttribute = "Value";
const char* const displayElement = "Display";

} // namespace

EnumItem::EnumItem(const std::string& value, const LocalString& display) : Node(value), _value(value), _display(display)
{
}

void EnumItem::_setExtendedXml(xmlpp::Element* own, const SerializationMode& mode)
{
    Node::_setExtendedXml(own, mode);
    if (const xmlpp::Attribute* const value = own->get_attribute(valueAttribute))
        _value = value->get_value();
    xmlpp::Element* const display = _getFirstChildElement(own, displayElement);
    if (display == nullptr)
        return;
    try {
        _display = LocalStringTypeConverter::fromXmlData(display, false);
    }
    catch (const std::runtime_error& error) {
        _onSerializationError("the display of the item '" + _value + "' cannot be read: " + error.what(), mode);
    }
}

void EnumItem::_getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const
{
    Node::_getExtendedXml(own, mode);
    own->set_attribute(valueAttribute, _value);
    if (!_display.empty())
        LocalStringTypeConverter::toXmlData(_display, own, displayElement);
}

} // namespace ZemTree
