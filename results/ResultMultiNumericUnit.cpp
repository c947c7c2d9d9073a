#include "results/ResultMultiNumericUnit.h"

#include "core/common/ConvertionHelper.h"
#include "core/common/XmlInclude.h"
#include "core/tree/Measure.h"
#include "core/tree/MeasureObject.h"
#include "core/tree/MeasureProperty.h"
#include "core/tree/TreeLocalization.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultMultiNumericTypeConverter.h"

#include <utility>

namespace ZemTree {

namespace {

const char* const measurePropertyId = "Measure";
const char* const measureAttribute = "Measure";
const char* const deviationAttribute = "Deviation";

} // namespace

ResultMultiNumericUnit::ResultMultiNumericUnit()
    : ResultMultiNumericUnit("ResultMultiNumericUnit", LocalString::Empty(), LocalString::Empty(), nullptr, nullptr)
{
}

ResultMultiNumericUnit::ResultMultiNumericUnit(const std::string& id, const LocalString& description,
                                               const LocalString& secondText, std::shared_ptr<ResultMultiNumeric> data,
                                               Measure* measure)
    : ResultUnitBase(id, description, secondText, std::move(data))
{
    auto property =
        std::make_unique<MeasureProperty>(measurePropertyId, LocalString(lng::Tree::get("Properties.Measure")));
    auto* const measureProperty = static_cast<MeasureProperty*>(_addPropertyInner(std::move(property)));
    _measureData = std::make_unique<MeasureObject>(measureProperty);
    measureProperty->setValue(measure);
}

// The property child outlives the handle: children go with the Node base, after the members.
ResultMultiNumericUnit::~ResultMultiNumericUnit() = default;

std::shared_ptr<ResultMultiNumeric> ResultMultiNumericUnit::_createDataFromXml(xmlpp::Element* element) const
{
    return _readResultXml<ResultMultiNumericTypeConverter>(element, "ResultMultiNumericUnit data parse error");
}

void ResultMultiNumericUnit::_getDataXml(const std::shared_ptr<ResultMultiNumeric>& data, xmlpp::Element* element) const
{
    _writeResultXml<ResultMultiNumericTypeConverter>(data, element);
}

std::string ResultMultiNumericUnit::_getDisplayXmlCurrentDataType() const
{
    return "ResultMultiNumeric";
}

void ResultMultiNumericUnit::_getDisplayXmlCurrentParameters(DisplayXmlParameters& /*parameters*/,
                                                             xmlpp::Element* element) const
{
    const MeasureProperty* const property = _measureData->getMeasure();
    if (property == nullptr)
        return;
    const Measure* const measure = property->getValueOut().value;
    if (measure != nullptr)
        element->set_attribute(measureAttribute, measure->getDescription());
}

void ResultMultiNumericUnit::_getDisplayXmlCurrentValue(DisplayXmlParameters& /*parameters*/,
                                                        xmlpp::Element* element) const
{
    const ResultMultiNumeric* const result = _getReportedResult();
    if (result == nullptr)
        return;
    const auto* const setting = dynamic_cast<const NumericSettingAssessment*>(result->getAssessment());
    if (setting != nullptr)
        element->add_child(reportValueName)
            ->add_child_text(Zem::convertToString<double, true>(setting->getSetting(), 2));
    xmlpp::Element* const items = element->add_child(reportItemsName);
    for (const auto& [key, item] : result->_items) {
        xmlpp::Element* const value = _addReportItem(items, key, item);
        value->add_child_text(item.getMeasurmentDisplayValue());
        if (setting != nullptr)
            value->set_attribute(deviationAttribute, item.getDeviation().getDisplayValue());
    }
}

} // namespace ZemTree
