#pragma once

#include "core/tree/LocalString.h"
#include "results/ResultMultiGraphUnitVisual.h"
#include "results/ResultUnitBase.h"
#include "results/graph/ResultMultiGraph.h"

#include <memory>
#include <string>

namespace ZemTree {

class DisplayXmlParameters;
class GraphDataTable;

// The unit of a multi graph result. Beside the result it keeps which representations of it are shown, saved with
// a project as the child "Visual". A report carries the judged tables and one picture of all the curves.
class ResultMultiGraphUnit : public ResultUnitBase<std::shared_ptr<ResultMultiGraph>> {
public:
    // Id "ResultMultiGraphUnit", no texts, no result: what NodeFactory makes before reading.
    ResultMultiGraphUnit();
    ResultMultiGraphUnit(const std::string& id, const LocalString& description, const LocalString& secondText,
                         std::shared_ptr<ResultMultiGraph> data);

    ResultMultiGraphUnitVisual& getVisual() { return _visual; }
    const ResultMultiGraphUnitVisual& getVisual() const { return _visual; }

protected:
    std::shared_ptr<ResultMultiGraph> _createDataFromXml(xmlpp::Element* element) const override;
    void _getDataXml(const std::shared_ptr<ResultMultiGraph>& data, xmlpp::Element* element) const override;

    // A project save adds the child "Visual".
    void _getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const override;
    // A project load reads the child "Visual"; without one the switches stay as they are.
    void _setExtendedXml(xmlpp::Element* own, const SerializationMode& mode) override;

    std::string _getDisplayXmlCurrentDataType() const override;
    // Items with one Value per curve (Key, State, IsValid) holding its tables and their records, then the picture:
    // its bare file name as the attribute Graph, the file itself in the report's image folder. A result without a
    // manager has no picture. Throws what the picture's naming and writing throw.
    void _getDisplayXmlCurrentValue(DisplayXmlParameters& parameters, xmlpp::Element* element) const override;

private:
    static void _addReportTable(const GraphDataTable& table, xmlpp::Element* item);
    static void _saveReportPicture(const ResultMultiGraph& result, DisplayXmlParameters& parameters,
                                   xmlpp::Element* element);

    ResultMultiGraphUnitVisual _visual;
};

} // namespace ZemTree
