#pragma once

#include "core/common/XmlInclude.h"
#include "core/tree/LocalString.h"
#include "values/Unit.h"

#include <string>

namespace ZemTree {

class DisplayXmlParameters;

// A flag of a test, such as "stop on the first failure". Saved as the attribute `Data` of its value element,
// "true" or "false"; the report element carries the flag as `Value` in the report's language.
class BooleanUnit : public Unit<bool> {
public:
    BooleanUnit(const std::string& id, const LocalString& description, const LocalString& secondText, bool defaultData);
    explicit BooleanUnit(const std::string& id);
    BooleanUnit();

    // "Yes" or "No" in the current language.
    static std::string displayText(bool flag);

protected:
    bool _createDataFromXml(xmlpp::Element* element) const override;
    void _getDataXml(const bool& data, xmlpp::Element* element) const override;
    void _getDisplayXmlCurrentValue(DisplayXmlParameters& parameters, xmlpp::Element* element) const override;
};

} // namespace ZemTree
