#include "results/ResultMultiNumericTypeConverter.h"

#include "core/common/XmlInclude.h"
#include "results/NumericAssessment.h"
#include "results/ResultMultiNumeric.h"
#include "results/ResultXmlHelper.h"

namespace ZemTree {

void ResultMultiNumericTypeConverter::toXmlData(const ResultMultiNumeric& result, xmlpp::Element* parent)
{
    xmlpp::Element* element = parent->add_child("ResultMultiNumeric");
    if (result.isEmpty())
        return;
    ResultXmlHelper::writeNumericAssessment(result.getAssessment(), element);
    ResultXmlHelper::writeItems(
        result._items,
        [](const ResultNumeric& item) -> const std::vector<std::string>& { return item.getMeasurmentCollection(); },
        element);
}

bool ResultMultiNumericTypeConverter::fromXmlData(const xmlpp::Element* element,
                                                  std::shared_ptr<ResultMultiNumeric>& result)
{
    if (element == nullptr || element->get_name() != "ResultMultiNumeric")
        return false;
    if (!ResultXmlHelper::hasChildElement(element)) {
        result = std::make_shared<ResultMultiNumeric>();
        return true;
    }
    std::shared_ptr<NumericAssessment> assessment;
    const xmlpp::Attribute* kind = element->get_attribute("Assessment");
    if (kind != nullptr && kind->get_value() == "Setting"
        && !ResultXmlHelper::readNumericSettingAssessment(element, assessment))
        return false;
    std::map<std::string, std::vector<std::string>> items;
    if (!ResultXmlHelper::readItems(element, items))
        return false;
    result = std::make_shared<ResultMultiNumeric>(items, assessment);
    return true;
}

} // namespace ZemTree
