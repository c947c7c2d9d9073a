#include "results/ResultMultiStringUnit.h"

#include "core/common/XmlInclude.h"
#include "results/ResultMultiStringTypeConverter.h"
#include "results/StringSettingAssessment.h"

#include <utility>

namespace ZemTree {

ResultMultiStringUnit::ResultMultiStringUnit()
    : ResultMultiStringUnit("ResultMultiStringUnit", LocalString::Empty(), LocalString::Empty(), nullptr)
{
}

ResultMultiStringUnit::ResultMultiStringUnit(const std::string& id, const LocalString& description,
                                             const LocalString& secondText, std::shared_ptr<ResultMultiString> data)
    : ResultUnitBase(id, description, secondText, std::move(data))
{
}

std::shared_ptr<ResultMultiString> ResultMultiStringUnit::_createDataFromXml(xmlpp::Element* element) const
{
    return _readResultXml<ResultMultiStringTypeConverter>(element, "ResultMultiStringUnit data parse error");
}

void ResultMultiStringUnit::_getDataXml(const std::shared_ptr<ResultMultiString>& data, xmlpp::Element* element) const
{
    _writeResultXml<ResultMultiStringTypeConverter>(data, element);
}

std::string ResultMultiStringUnit::_getDisplayXmlCurrentDataType() const
{
    return "ResultMultiString";
}

void ResultMultiStringUnit::_getDisplayXmlCurrentValue(DisplayXmlParameters& /*parameters*/,
                                                       xmlpp::Element* element) const
{
    const ResultMultiString* const result = _getReportedResult();
    if (result == nullptr)
        return;
    if (const auto* const setting = dynamic_cast<const StringSettingAssessment*>(result->getAssessment()))
        element->add_child(reportValueName)->add_child_text(setting->getValidValue());
    xmlpp::Element* const items = element->add_child(reportItemsName);
    for (const auto& [key, item] : result->_items)
        _addReportItem(items, key, item)->add_child_text(item.getMeasurment());
}

} // namespace ZemTree
