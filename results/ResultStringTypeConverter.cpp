#include "results/ResultStringTypeConverter.h"

#include "core/common/XmlInclude.h"
#include "results/ResultString.h"
#include "results/ResultXmlHelper.h"
#include "results/StringAssessment.h"

namespace ZemTree {

void ResultStringTypeConverter::toXmlData(const ResultString& result, xmlpp::Element* parent)
{
    xmlpp::Element* element = parent->add_child("ResultString");
    if (result.isEmpty())
        return;
    ResultXmlHelper::writeStringAssessment(result.getAssessment(), element);
    ResultXmlHelper::writeValues(result.getMeasurmentCollection(), element);
}

bool ResultStringTypeConverter::fromXmlData(const xmlpp::Element* element, std::shared_ptr<ResultString>& result)
{
    if (element == nullptr || element->get_name() != "ResultString")
        return false;
    if (!ResultXmlHelper::hasChildElement(element)) {
        result = std::make_shared<ResultString>();
        return true;
    }
    std::shared_ptr<StringAssessment> assessment;
    if (!ResultXmlHelper::readStringAssessment(element, assessment))
        return false;
    std::vector<std::string> texts;
    if (!ResultXmlHelper::readValues(element, texts))
        return false;
    result = std::make_shared<ResultString>(texts, assessment);
    return true;
}

} // namespace ZemTree
