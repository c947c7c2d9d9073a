#include "core/tree/LocalStringTypeConverter.h"

#include "core/common/XmlInclude.h"

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

namespace ZemTree {

namespace {

const char* const textAttribute = "Text";
const char* const valueElement = "Value";
const char* const languageAttribute = "Language";

LocalString parse(const xmlpp::Element* element)
{
    if (element == nullptr)
        throw std::runtime_error("LocalString element is missing");

    const xmlpp::Attribute* const plain = element->get_attribute(textAttribute);
    LocalString result(plain != nullptr ? std::string(plain->get_value()) : std::string());

    for (const xmlpp::Node* child : element->get_children(valueElement)) {
        const auto* value = dynamic_cast<const xmlpp::Element*>(child);
        if (value == nullptr)
            continue;
        const xmlpp::Attribute* language = value->get_attribute(languageAttribute);
        if (language == nullptr || language->get_value().empty())
            throw std::runtime_error("LocalString value without language");
        const std::string key = language->get_value();
        if (result.getValues().count(key) != 0)
            throw std::runtime_error("LocalString language repeated: " + key);
        const xmlpp::Attribute* text = value->get_attribute(textAttribute);
        result.setValue(text != nullptr ? std::string(text->get_value()) : std::string(), key);
    }
    return result;
}

} // namespace

xmlpp::Element* LocalStringTypeConverter::toXmlData(const LocalString& value, xmlpp::Element* parent,
                                                    const std::string& name)
{
    xmlpp::Element* element = parent->add_child(name);
    element->set_attribute(textAttribute, value.getPlainText());

    std::vector<std::pair<std::string, std::string>> values(value.getValues().begin(), value.getValues().end());
    std::sort(values.begin(), values.end());
    for (const auto& entry : values) {
        xmlpp::Element* child = element->add_child(valueElement);
        child->set_attribute(languageAttribute, entry.first);
        child->set_attribute(textAttribute, entry.second);
    }
    return element;
}

LocalString LocalStringTypeConverter::fromXmlData(const xmlpp::Element* element, bool emptyOnError)
{
    if (!emptyOnError)
        return parse(element);
    try {
        return parse(element);
    }
    catch (const std::runtime_error&) {
        return LocalString();
    }
}

LocalString LocalStringTypeConverter::fromXmlChild(const xmlpp::Element* parent, const std::string& name,
                                                   bool emptyOnError)
{
    const xmlpp::Element* element = nullptr;
    if (parent != nullptr) {
        for (const xmlpp::Node* child : parent->get_children(name)) {
            element = dynamic_cast<const xmlpp::Element*>(child);
            if (element != nullptr)
                break;
        }
    }
    return fromXmlData(element, emptyOnError);
}

} // namespace ZemTree
