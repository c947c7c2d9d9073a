#pragma once

#include "core/tree/LocalString.h"
#include "results/ResultMultiNumeric.h"
#include "results/ResultUnitBase.h"

#include <memory>
#include <string>

namespace ZemTree {

class DisplayXmlParameters;
class Measure;
class MeasureObject;

// The unit of a multi numeric result. Its measure is an ordinary property child with the id "Measure", saved with
// the unit and read through getMeasureData()->getMeasureValue(); a report names it beside the measured values.
class ResultMultiNumericUnit : public ResultUnitBase<std::shared_ptr<ResultMultiNumeric>> {
public:
    // Id "ResultMultiNumericUnit", no texts, no result, no measure: what NodeFactory makes before reading.
    ResultMultiNumericUnit();
    ResultMultiNumericUnit(const std::string& id, const LocalString& description, const LocalString& secondText,
                           std::shared_ptr<ResultMultiNumeric> data, Measure* measure);
    ~ResultMultiNumericUnit() override;

    // Never null; a handle on the unit's measure property.
    MeasureObject* getMeasureData() const { return _measureData.get(); }

protected:
    std::shared_ptr<ResultMultiNumeric> _createDataFromXml(xmlpp::Element* element) const override;
    void _getDataXml(const std::shared_ptr<ResultMultiNumeric>& data, xmlpp::Element* element) const override;

    std::string _getDisplayXmlCurrentDataType() const override;
    // The attribute Measure with the measure's display name, when a measure is set.
    void _getDisplayXmlCurrentParameters(DisplayXmlParameters& parameters, xmlpp::Element* element) const override;
    // The setting as a child Value (setting assessments only), then Items with one Value per item: Key, State,
    // IsValid, the display value as text, and Deviation with a setting assessment.
    void _getDisplayXmlCurrentValue(DisplayXmlParameters& parameters, xmlpp::Element* element) const override;

private:
    std::unique_ptr<MeasureObject> _measureData;
};

} // namespace ZemTree
