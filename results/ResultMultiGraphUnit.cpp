#include "results/ResultMultiGraphUnit.h"

#include "core/common/ConvertionHelper.h"
#include "core/common/Figure.h"
#include "core/common/FiguresDrawManager.h"
#include "core/common/PathHelper.h"
#include "core/common/Point.h"
#include "core/common/XmlInclude.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/Measure.h"
#include "results/NumericSettingAssessment.h"
#include "results/graph/GraphDataHeader.h"
#include "results/graph/GraphDataRecord.h"
#include "results/graph/GraphDataTable.h"
#include "results/graph/IGraphManager.h"
#include "results/graph/ResultMultiGraphTypeConverter.h"

#include <map>
#include <utility>
#include <vector>

namespace ZemTree {

namespace {

const char* const visualElementName = "Visual";
const char* const tableElementName = "Table";
const char* const recordElementName = "Result";
const char* const graphAttribute = "Graph";

std::string numberText(double value)
{
    return Zem::convertToString<double, true>(value, 2);
}

std::string measureText(const Measure* measure)
{
    return measure != nullptr ? measure->getDescription() : std::string();
}

// "description" or "description, measure".
std::string captionText(const std::string& description, const Measure* measure)
{
    if (measure == nullptr)
        return description;
    return description + ", " + measure->getDescription();
}

} // namespace

ResultMultiGraphUnit::ResultMultiGraphUnit()
    : ResultMultiGraphUnit("ResultMultiGraphUnit", LocalString::Empty(), LocalString::Empty(), nullptr)
{
}

ResultMultiGraphUnit::ResultMultiGraphUnit(const std::string& id, const LocalString& description,
                                           const LocalString& secondText, std::shared_ptr<ResultMultiGraph> data)
    : ResultUnitBase(id, description, secondText, std::move(data))
{
}

std::shared_ptr<ResultMultiGraph> ResultMultiGraphUnit::_createDataFromXml(xmlpp::Element* element) const
{
    return _readResultXml<ResultMultiGraphTypeConverter>(element, "ResultMultiGraphUnit data parse error");
}

void ResultMultiGraphUnit::_getDataXml(const std::shared_ptr<ResultMultiGraph>& data, xmlpp::Element* element) const
{
    _writeResultXml<ResultMultiGraphTypeConverter>(data, element);
}

void ResultMultiGraphUnit::_getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const
{
    ResultUnitBase::_getExtendedXml(own, mode);
    if (mode.kind == SerializationMode::User)
        _visual.toXml(own, visualElementName);
}

void ResultMultiGraphUnit::_setExtendedXml(xmlpp::Element* own, const SerializationMode& mode)
{
    ResultUnitBase::_setExtendedXml(own, mode);
    if (mode.kind == SerializationMode::User)
        _visual.fromXml(_getFirstChildElement(own, visualElementName));
}

std::string ResultMultiGraphUnit::_getDisplayXmlCurrentDataType() const
{
    return "ResultMultiGraph";
}

void ResultMultiGraphUnit::_getDisplayXmlCurrentValue(DisplayXmlParameters& parameters, xmlpp::Element* element) const
{
    const ResultMultiGraph* const result = _getReportedResult();
    if (result == nullptr)
        return;
    xmlpp::Element* const items = element->add_child(reportItemsName);
    for (const auto& [key, item] : result->_items) {
        xmlpp::Element* const value = _addReportItem(items, key, item);
        for (const std::shared_ptr<GraphDataTable>& table : item.getDataTables()) {
            if (table)
                _addReportTable(*table, value);
        }
    }
    // The manager draws without a test of its own, so a result without one has nothing to draw.
    if (result->getManager() != nullptr)
        _saveReportPicture(*result, parameters, element);
}

void ResultMultiGraphUnit::_addReportTable(const GraphDataTable& table, xmlpp::Element* item)
{
    const std::shared_ptr<GraphDataHeader> header = table.getHeader();
    xmlpp::Element* const tableElement = item->add_child(tableElementName);
    tableElement->set_attribute("DescriptionX", header->getDescriptionX());
    tableElement->set_attribute("MeasureX", measureText(header->getMeasureX()));
    tableElement->set_attribute("DescriptionY", header->getDescriptionY());
    tableElement->set_attribute("MeasureY", measureText(header->getMeasureY()));
    for (const std::shared_ptr<GraphDataRecord>& record : table._records) {
        if (!record)
            continue;
        const ResultNumeric& recordResult = record->getResult();
        const auto* const setting = dynamic_cast<const NumericSettingAssessment*>(recordResult.getAssessment());
        xmlpp::Element* const recordElement = tableElement->add_child(recordElementName);
        recordElement->set_attribute("XSet", numberText(record->getValue()));
        if (setting != nullptr)
            recordElement->set_attribute("YSet", numberText(setting->getSetting()));
        recordElement->set_attribute("YMeasurment", recordResult.getMeasurmentDisplayValue());
        if (setting != nullptr)
            recordElement->set_attribute("YDeviation", recordResult.getDeviation().getDisplayValue());
        recordElement->set_attribute(reportStateAttribute, recordResult.getStateDescription());
        _setReportIsValid(recordResult, recordElement);
    }
}

// One picture of all the curves, whatever the visual switches say.
void ResultMultiGraphUnit::_saveReportPicture(const ResultMultiGraph& result, DisplayXmlParameters& parameters,
                                              xmlpp::Element* element)
{
    const std::string path = parameters.generateNewImageName();
    element->set_attribute(graphAttribute, Zem::getPathFileName(path));

    std::map<std::string, std::vector<Zem::Point>> points;
    for (const auto& [key, item] : result._items)
        points.emplace(key, item.getPointCollection());
    std::map<std::string, std::unique_ptr<Zem::Figure>> figures;
    std::shared_ptr<GraphDataHeader> header;
    result.getManager()->getFigures(points, figures, header);

    std::string horizontalCaption;
    std::string verticalCaption;
    if (header) {
        horizontalCaption = captionText(header->getDescriptionX(), header->getMeasureX());
        verticalCaption = captionText(header->getDescriptionY(), header->getMeasureY());
    }
    Zem::FiguresDrawManager::getInstance()->saveToImage(path, figures, horizontalCaption, verticalCaption,
                                                        result.getManager()->getFigureLabels());
}

} // namespace ZemTree
