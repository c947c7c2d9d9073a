#include "core/tree/PropertyBase.h"

#include "core/common/XmlInclude.h"

namespace ZemTree {

namespace {

const char* const valueAttribute = "Value";

} // namespace

PropertyBase::PropertyBase(const std::string& id, const LocalString& description, const LocalString& secondText)
    : Unitable(id, description, secondText)
{
}

const Zem::ErrorPointer& PropertyBase::getError() const
{
    static const Zem::ErrorPointer none;
    return none;
}

void PropertyBase::_emitValueChanged()
{
    signalValueOutChanged.emit();
    _signalValueChanged.emit();
}

void PropertyBase::_setExtendedXml(xmlpp::Element* own, const SerializationMode& mode)
{
    Unitable::_setExtendedXml(own, mode);
    const xmlpp::Attribute* const value = own->get_attribute(valueAttribute);
    if (value == nullptr)
        return;
    const std::string text = value->get_value();
    if (!_trySetValueText(text))
        _onSerializationError("the value '" + text + "' of the property cannot be read", mode);
}

void PropertyBase::_getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const
{
    Unitable::_getExtendedXml(own, mode);
    own->set_attribute(valueAttribute, _getValueText());
}

xmlpp::Element* PropertyBase::_getDisplayXmlCurrent(DisplayXmlParameters&, xmlpp::Element*) const
{
    return nullptr;
}

} // namespace ZemTree
