#pragma once

#include "values/EnumLimitedUnit.h"

#include <string>

namespace ZemDemo {

// The inverse-time curve of an overcurrent stage: "standard", "very" or "extremely", limited to those three.
// Saved as the attribute `Data` of its value element. A text outside the list stays as set and shows an
// OutOfRangeError in the value out; the report carries the curve's display text as `Value`.
class CurveUnit : public ZemTree::EnumLimitedUnit<std::string> {
public:
    CurveUnit(const std::string& id, const ZemTree::LocalString& description, const std::string& defaultData);
    CurveUnit();

protected:
    std::string _createDefaultData() const override { return "standard"; }
    std::unique_ptr<Zem::Out<std::string>> _coerceValueOut(std::unique_ptr<Zem::Out<std::string>> out) const override;
    std::string _createDataFromXml(xmlpp::Element* element) const override;
    void _getDataXml(const std::string& data, xmlpp::Element* element) const override;
    void _getDisplayXmlCurrentValue(ZemTree::DisplayXmlParameters& parameters, xmlpp::Element* element) const override;
    std::string _getDisplayXmlCurrentDataType() const override { return "Curve"; }

private:
    void _fillCurves();
};

} // namespace ZemDemo
