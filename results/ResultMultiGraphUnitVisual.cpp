#include "results/ResultMultiGraphUnitVisual.h"

#include "core/common/XmlInclude.h"

namespace ZemTree {

namespace {

const char* const isGraphVisibleAttribute = "IsGraphVisible";
const char* const isTableVisibleAttribute = "IsTableVisible";

// "true", "1" and "True" say on, "false", "0" and "False" say off; anything else, absence included, is on.
bool readFlag(const xmlpp::Element* element, const char* name)
{
    const xmlpp::Attribute* const attribute = element->get_attribute(name);
    const std::string text = attribute != nullptr ? std::string(attribute->get_value()) : std::string();
    return !(text == "false" || text == "0" || text == "False");
}

} // namespace

void ResultMultiGraphUnitVisual::setIsGraphVisible(bool isGraphVisible)
{
    if (_isGraphVisible == isGraphVisible)
        return;
    _isGraphVisible = isGraphVisible;
    signalIsGraphVisibleChanged.emit();
}

void ResultMultiGraphUnitVisual::setIsTableVisible(bool isTableVisible)
{
    if (_isTableVisible == isTableVisible)
        return;
    _isTableVisible = isTableVisible;
    signalIsTableVisibleChanged.emit();
}

void ResultMultiGraphUnitVisual::toXml(xmlpp::Element* parent, const std::string& name) const
{
    if (parent == nullptr)
        return;
    xmlpp::Element* const element = parent->add_child(name);
    if (!_isGraphVisible)
        element->set_attribute(isGraphVisibleAttribute, "false");
    if (!_isTableVisible)
        element->set_attribute(isTableVisibleAttribute, "false");
}

void ResultMultiGraphUnitVisual::fromXml(const xmlpp::Element* element)
{
    if (element == nullptr)
        return;
    _isGraphVisible = readFlag(element, isGraphVisibleAttribute);
    _isTableVisible = readFlag(element, isTableVisibleAttribute);
}

} // namespace ZemTree
