#include "results/ResultNumericTypeConverter.h"

#include "core/common/XmlInclude.h"
#include "results/NumericAssessment.h"
#include "results/ResultNumeric.h"
#include "results/ResultXmlHelper.h"

namespace ZemTree {

void ResultNumericTypeConverter::toXmlData(const ResultNumeric& result, xmlpp::Element* parent)
{
    xmlpp::Element* element = parent->add_child("ResultNumeric");
    if (result.isEmpty())
        return;
    ResultXmlHelper::writeNumericAssessment(result.getAssessment(), element);
    ResultXmlHelper::writeValues(result.getMeasurmentCollection(), element);
}

bool ResultNumericTypeConverter::fromXmlData(const xmlpp::Element* element, std::shared_ptr<ResultNumeric>& result)
{
    if (element == nullptr || element->get_name() != "ResultNumeric")
        return false;
    if (!ResultXmlHelper::hasChildElement(element)) {
        result = std::make_shared<ResultNumeric>();
        return true;
    }
    // Unlike the other results, a single numeric result must say what its assessment is.
    const xmlpp::Attribute* kind = element->get_attribute("Assessment");
    if (kind == nullptr)
        return false;
    std::shared_ptr<NumericAssessment> assessment;
    if (kind->get_value() == "Setting" && !ResultXmlHelper::readNumericSettingAssessment(element, assessment))
        return false;
    std::vector<std::string> texts;
    if (!ResultXmlHelper::readValues(element, texts))
        return false;
    result = std::make_shared<ResultNumeric>(texts, assessment);
    return true;
}

} // namespace ZemTree
