#pragma once

#include "core/tree/LocalString.h"
#include "results/ResultMultiString.h"
#include "results/ResultUnitBase.h"

#include <memory>
#include <string>

namespace ZemTree {

class DisplayXmlParameters;

// The unit of a multi string result.
class ResultMultiStringUnit : public ResultUnitBase<std::shared_ptr<ResultMultiString>> {
public:
    // Id "ResultMultiStringUnit", no texts, no result: what NodeFactory makes before reading.
    ResultMultiStringUnit();
    ResultMultiStringUnit(const std::string& id, const LocalString& description, const LocalString& secondText,
                          std::shared_ptr<ResultMultiString> data);

protected:
    std::shared_ptr<ResultMultiString> _createDataFromXml(xmlpp::Element* element) const override;
    void _getDataXml(const std::shared_ptr<ResultMultiString>& data, xmlpp::Element* element) const override;

    std::string _getDisplayXmlCurrentDataType() const override;
    // The valid text as a child Value (setting assessments only), then Items with one Value per item: Key, State,
    // IsValid and the measured text.
    void _getDisplayXmlCurrentValue(DisplayXmlParameters& parameters, xmlpp::Element* element) const override;
};

} // namespace ZemTree
