#include "results/ResultMultiStringTypeConverter.h"

#include "core/common/XmlInclude.h"
#include "results/ResultMultiString.h"
#include "results/ResultXmlHelper.h"
#include "results/StringAssessment.h"

namespace ZemTree {

void ResultMultiStringTypeConverter::toXmlData(const ResultMultiString& result, xmlpp::Element* parent)
{
    xmlpp::Element* element = parent->add_child("ResultMultiString");
    if (result.isEmpty())
        return;
    ResultXmlHelper::writeStringAssessment(result.getAssessment(), element);
    ResultXmlHelper::writeItems(
        result._items,
        [](const ResultString& item) -> const std::vector<std::string>& { return item.getMeasurmentCollection(); },
        element);
}

bool ResultMultiStringTypeConverter::fromXmlData(const xmlpp::Element* element,
                                                 std::shared_ptr<ResultMultiString>& result)
{
    if (element == nullptr || element->get_name() != "ResultMultiString")
        return false;
    if (!ResultXmlHelper::hasChildElement(element)) {
        result = std::make_shared<ResultMultiString>();
        return true;
    }
    std::shared_ptr<StringAssessment> assessment;
    if (!ResultXmlHelper::readStringAssessment(element, assessment))
        return false;
    std::map<std::string, std::vector<std::string>> items;
    if (!ResultXmlHelper::readItems(element, items))
        return false;
    result = std::make_shared<ResultMultiString>(items, assessment);
    return true;
}

} // namespace ZemTree
