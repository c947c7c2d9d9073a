#pragma once

#include "core/common/Nullable.h"
#include "core/common/XmlInclude.h"
#include "core/tree/LocalString.h"
#include "values/Unit.h"

#include <memory>
#include <string>

namespace ZemTree {

class DisplayXmlParameters;
class Measure;
class MeasureProperty;

// A number of a test, such as a setting or a parameter: a real value in a measure, with optional bounds and the
// number of decimals it is shown with.
//
// Saved as the attribute `Data` of its value element in the locale-free real form. The measure, the bounds and
// the precision belong to the class that makes the unit and are not saved. A number outside the bounds stays as
// set and shows OutOfRangeError in the value out. The report element carries the shown number as `Value` and the
// measure's short name as `Measure`.
class NumericUnit : public Unit<double> {
public:
    static constexpr int defaultPrecision = 6;

    NumericUnit(const std::string& id, const LocalString& description, const LocalString& secondText,
                double defaultData, Measure* measure = nullptr);
    explicit NumericUnit(const std::string& id);
    NumericUnit();
    ~NumericUnit() override;

    // The measure as a property that a view can follow; never null.
    MeasureProperty* getMeasureProperty() const { return _measure.get(); }
    // The measure, null for none.
    Measure* getMeasure() const;
    void setMeasure(Measure* measure);

    const Zem::Nullable<double>& getMinimum() const { return _minimum; }
    const Zem::Nullable<double>& getMaximum() const { return _maximum; }
    // Either bound may be empty. Throws std::logic_error when both are given and the minimum exceeds the maximum.
    void setBounds(const Zem::Nullable<double>& minimum, const Zem::Nullable<double>& maximum);

    // Decimals shown at most; trailing zeros are dropped. 0 to 15.
    int getPrecision() const { return _precision; }
    void setPrecision(int precision);

    // The value out as shown: at most getPrecision() decimals, without trailing zeros.
    std::string getDisplayValue() const;
    // The same form for any number.
    static std::string formatNumber(double number, int precision);

protected:
    std::unique_ptr<Zem::Out<double>> _coerceValueOut(std::unique_ptr<Zem::Out<double>> out) const override;
    double _createDataFromXml(xmlpp::Element* element) const override;
    void _getDataXml(const double& data, xmlpp::Element* element) const override;
    void _getDisplayXmlCurrentValue(DisplayXmlParameters& parameters, xmlpp::Element* element) const override;

private:
    // Whether `text` is written as a number, whatever its size: "1e999", "-inf", "nan".
    static bool _looksLikeNumber(const std::string& text);

    std::unique_ptr<MeasureProperty> _measure;
    Zem::Nullable<double> _minimum;
    Zem::Nullable<double> _maximum;
    int _precision = defaultPrecision;
};

} // namespace ZemTree
