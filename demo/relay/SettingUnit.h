#pragma once

#include "values/Unit.h"

#include <string>

namespace ZemTree {
class Measure;
}

namespace ZemDemo {

// A numeric setting of an example test: a number in a measure, saved as the attribute `Data` of its value.
class SettingUnit : public ZemTree::Unit<double> {
public:
    SettingUnit();
    // The measure is not owned and may be null.
    SettingUnit(const std::string& id, const ZemTree::LocalString& description, double value,
                ZemTree::Measure* measure);

    ZemTree::Measure* getMeasure() const { return _measure; }

protected:
    double _createDataFromXml(xmlpp::Element* element) const override;
    void _getDataXml(const double& data, xmlpp::Element* element) const override;

private:
    ZemTree::Measure* _measure = nullptr;
};

} // namespace ZemDemo
