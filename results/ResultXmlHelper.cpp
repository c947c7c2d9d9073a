#include "results/ResultXmlHelper.h"

#include "core/common/ConvertionHelper.h"
#include "core/common/XmlInclude.h"
#include "core/tree/ToleranceReduced.h"
#include "core/tree/ToleranceReducedTypeConverter.h"
#include "results/NumericSettingAssessment.h"
#include "results/StringSettingAssessment.h"

namespace ZemTree {

namespace {

const char* const assessmentAttribute = "Assessment";
const char* const settingWord = "Setting";

const xmlpp::Element* firstChildElement(const xmlpp::Element* element, const char* name)
{
    for (const xmlpp::Node* child : element->get_children(name)) {
        if (const auto* found = dynamic_cast<const xmlpp::Element*>(child))
            return found;
    }
    return nullptr;
}

} // namespace

bool ResultXmlHelper::hasChildElement(const xmlpp::Element* element)
{
    for (const xmlpp::Node* child : element->get_children()) {
        if (dynamic_cast<const xmlpp::Element*>(child) != nullptr)
            return true;
    }
    return false;
}

bool ResultXmlHelper::tryGetText(const xmlpp::Element* element, std::string& text)
{
    const xmlpp::TextNode* node = element->get_child_text();
    if (node == nullptr)
        return false;
    text = node->get_content().raw();
    return true;
}

void ResultXmlHelper::writeNumericAssessment(const NumericAssessment* assessment, xmlpp::Element* element)
{
    const auto* setting = dynamic_cast<const NumericSettingAssessment*>(assessment);
    if (setting == nullptr)
        return;
    element->set_attribute(assessmentAttribute, settingWord);
    element->add_child("Setting")->add_child_text(Zem::convertToString<double, true>(setting->getSetting(), 2));
    element->add_child("Tolerance")
        ->add_child_text(ToleranceReducedTypeConverter::toStringData(*setting->getTolerance()));
}

bool ResultXmlHelper::readNumericSettingAssessment(const xmlpp::Element* element,
                                                   std::shared_ptr<NumericAssessment>& assessment)
{
    assessment.reset();
    const xmlpp::Element* settingElement = firstChildElement(element, "Setting");
    const xmlpp::Element* toleranceElement = firstChildElement(element, "Tolerance");
    if (settingElement == nullptr || toleranceElement == nullptr)
        return true;
    std::string settingText;
    std::string toleranceText;
    double setting = 0.0;
    if (!tryGetText(settingElement, settingText) || !Zem::tryConvert<double, true>(settingText, setting))
        return false;
    // The reduced tolerance starts with both ranges absent; the text fills in what it has.
    auto tolerance = std::make_shared<ToleranceReduced>();
    if (!tryGetText(toleranceElement, toleranceText)
        || !ToleranceReducedTypeConverter::fromStringData(toleranceText, *tolerance))
        return false;
    assessment = std::make_shared<NumericSettingAssessment>(setting, tolerance);
    return true;
}

void ResultXmlHelper::writeStringAssessment(const StringAssessment* assessment, xmlpp::Element* element)
{
    const auto* setting = dynamic_cast<const StringSettingAssessment*>(assessment);
    if (setting == nullptr)
        return;
    element->set_attribute(assessmentAttribute, settingWord);
    element->set_attribute("Valid", setting->getValidValue());
}

bool ResultXmlHelper::readStringAssessment(const xmlpp::Element* element, std::shared_ptr<StringAssessment>& assessment)
{
    assessment.reset();
    const xmlpp::Attribute* kind = element->get_attribute(assessmentAttribute);
    if (kind == nullptr || kind->get_value() != settingWord)
        return true;
    const xmlpp::Attribute* valid = element->get_attribute("Valid");
    if (valid == nullptr)
        return false;
    assessment = std::make_shared<StringSettingAssessment>(valid->get_value().raw());
    return true;
}

void ResultXmlHelper::writeValues(const std::vector<std::string>& texts, xmlpp::Element* element)
{
    _addValueChildren(texts, element->add_child("Values"));
}

bool ResultXmlHelper::readValues(const xmlpp::Element* element, std::vector<std::string>& texts)
{
    const xmlpp::Element* values = firstChildElement(element, "Values");
    if (values == nullptr)
        return false;
    texts = _readTextChildren(values);
    return true;
}

bool ResultXmlHelper::readItems(const xmlpp::Element* element, std::map<std::string, std::vector<std::string>>& items)
{
    const xmlpp::Element* itemsElement = firstChildElement(element, "Items");
    if (itemsElement == nullptr)
        return false;
    std::map<std::string, std::vector<std::string>> read;
    for (const xmlpp::Node* child : itemsElement->get_children()) {
        const auto* item = dynamic_cast<const xmlpp::Element*>(child);
        if (item == nullptr)
            continue;
        const xmlpp::Attribute* name = item->get_attribute("Name");
        if (name == nullptr)
            return false;
        // emplace keeps an item already read under that name.
        read.emplace(name->get_value().raw(), _readTextChildren(item));
    }
    items = std::move(read);
    return true;
}

xmlpp::Element* ResultXmlHelper::_addItems(xmlpp::Element* element)
{
    return element->add_child("Items");
}

void ResultXmlHelper::_addItem(xmlpp::Element* items, const std::string& name, const std::vector<std::string>& texts)
{
    xmlpp::Element* item = items->add_child("Item");
    item->set_attribute("Name", name);
    _addValueChildren(texts, item);
}

void ResultXmlHelper::_addValueChildren(const std::vector<std::string>& texts, xmlpp::Element* element)
{
    for (const std::string& text : texts)
        element->add_child("Value")->add_child_text(text);
}

std::vector<std::string> ResultXmlHelper::_readTextChildren(const xmlpp::Element* element)
{
    std::vector<std::string> texts;
    for (const xmlpp::Node* child : element->get_children()) {
        const auto* value = dynamic_cast<const xmlpp::Element*>(child);
        std::string text;
        if (value != nullptr && tryGetText(value, text))
            texts.push_back(std::move(text));
    }
    return texts;
}

} // namespace ZemTree
