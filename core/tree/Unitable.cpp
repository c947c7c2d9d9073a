#include "core/tree/Unitable.h"

#include "core/common/XmlInclude.h"
#include "core/tree/LocalStringTypeConverter.h"

#include <exception>

namespace ZemTree {

namespace {

const char* const isActiveAttribute = "IsActive";
const char* const isHiddenAttribute = "IsHidden";
const char* const secondTextElement = "SecondText";

const char* boolText(bool value)
{
    return value ? "true" : "false";
}

} // namespace

Unitable::Unitable(const std::string& id, const LocalString& description, const LocalString& secondText)
    : Node(id, description), _secondText(secondText), _isEditable(this)
{
}

void Unitable::setSecondText(const LocalString& secondText)
{
    if (_secondText == secondText)
        return;
    _secondText = secondText;
    _signalSecondTextChanged.emit(this);
}

void Unitable::setIsHidden(bool isHidden)
{
    if (_isHidden == isHidden)
        return;
    _isHidden = isHidden;
    _onIsHiddenChanged();
    _signalIsHiddenChanged.emit(this);
}

void Unitable::setIsActive(bool isActive)
{
    if (_isActive == isActive)
        return;
    _isActive = isActive;
    _signalIsActiveChanged.emit(this);
}

void Unitable::getDisplayXml(DisplayXmlParameters& parameters, xmlpp::Element* parent) const
{
    if (_isHidden)
        return;
    Node::getDisplayXml(parameters, parent);
}

void Unitable::_setExtendedXml(xmlpp::Element* own, const SerializationMode& mode)
{
    Node::_setExtendedXml(own, mode);
    bool value = false;
    if (_isActiveSerializable() && _readBoolAttribute(own, isActiveAttribute, value, mode))
        setIsActive(value);
    if (_readBoolAttribute(own, isHiddenAttribute, value, mode))
        setIsHidden(value);
}

void Unitable::_getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const
{
    Node::_getExtendedXml(own, mode);
    if (_isActiveSerializable())
        own->set_attribute(isActiveAttribute, boolText(_isActive));
    own->set_attribute(isHiddenAttribute, boolText(_isHidden));
}

void Unitable::_setDescriptorsXml(xmlpp::Element* own, const SerializationMode& mode)
{
    Node::_setDescriptorsXml(own, mode);
    if (isReadOnlyDescriptors())
        return;
    xmlpp::Element* const secondText = _getFirstChildElement(own, secondTextElement);
    if (secondText == nullptr)
        return;
    try {
        setSecondText(LocalStringTypeConverter::fromXmlData(secondText, false));
    }
    catch (const std::exception& error) {
        _onSerializationError(std::string("the second text cannot be read: ") + error.what(), mode);
    }
}

void Unitable::_getDescriptorsXml(xmlpp::Element* own, const SerializationMode& mode) const
{
    Node::_getDescriptorsXml(own, mode);
    if (isReadOnlyDescriptors() || _secondText.empty())
        return;
    LocalStringTypeConverter::toXmlData(_secondText, own, secondTextElement);
}

xmlpp::Element* Unitable::_getDisplayXmlCurrent(DisplayXmlParameters& parameters, xmlpp::Element* parent) const
{
    xmlpp::Element* const own = Node::_getDisplayXmlCurrent(parameters, parent);
    if (own == nullptr)
        return nullptr;
    if (!_secondText.empty())
        own->set_attribute(secondTextElement, getSecondText());
    if (!_isActive)
        own->set_attribute(isActiveAttribute, boolText(false));
    return own;
}

bool Unitable::_readBoolAttribute(xmlpp::Element* own, const std::string& name, bool& value,
                                  const SerializationMode& mode) const
{
    const xmlpp::Attribute* const attribute = own->get_attribute(name);
    if (attribute == nullptr)
        return false;
    const std::string text = attribute->get_value();
    if (text == "true" || text == "True" || text == "1") {
        value = true;
        return true;
    }
    if (text == "false" || text == "False" || text == "0") {
        value = false;
        return true;
    }
    _onSerializationError("the attribute " + name + " has the unknown value '" + text + "'", mode);
    return false;
}

} // namespace ZemTree
