#include "containers/SpecialModuleInfo.h"

#include "core/common/XmlInclude.h"
#include "core/tree/LocalStringTypeConverter.h"

#include <cstdio>
#include <string>

namespace ZemTree {

namespace {

const char* const specialInfoElement = "SpecialInfo";
const char* const titleElement = "Title";
const char* const helpElement = "Help";

std::string attributeText(const xmlpp::Element* element, const char* name)
{
    const xmlpp::Attribute* const attribute = element->get_attribute(name);
    return attribute != nullptr ? std::string(attribute->get_value()) : std::string();
}

xmlpp::Element* firstChildElement(const xmlpp::Element* parent, const char* name)
{
    for (xmlpp::Node* child : parent->get_children(name)) {
        if (auto* element = dynamic_cast<xmlpp::Element*>(child))
            return element;
    }
    return nullptr;
}

} // namespace

void SpecialModuleInfo::getXml(xmlpp::Element* parent) const
{
    if (parent == nullptr)
        return;
    xmlpp::Element* const element = parent->add_child(specialInfoElement);
    char uid[32];
    std::snprintf(uid, sizeof uid, "%lu", static_cast<unsigned long>(_uid));
    element->set_attribute("UID", uid);
    element->set_attribute("Icon", _iconPath);
    element->set_attribute("Extension", _extension);
    LocalStringTypeConverter::toXmlData(_title, element, titleElement);
    LocalStringTypeConverter::toXmlData(_title, element, helpElement);
}

void SpecialModuleInfo::setXml(xmlpp::Element* parent)
{
    if (parent == nullptr)
        return;
    const xmlpp::Node::NodeList children = parent->get_children(specialInfoElement);
    auto* const element = children.empty() ? nullptr : dynamic_cast<xmlpp::Element*>(children.front());
    if (element == nullptr)
        return;
    _uid = std::stoull(attributeText(element, "UID"), nullptr, 10);
    _iconPath = attributeText(element, "Icon");
    _extension = attributeText(element, "Extension");
    if (const xmlpp::Element* title = firstChildElement(element, titleElement))
        _title = LocalStringTypeConverter::fromXmlData(title, false);
    if (const xmlpp::Element* help = firstChildElement(element, helpElement))
        _helpPath = LocalStringTypeConverter::fromXmlData(help, false);
}

} // namespace ZemTree
