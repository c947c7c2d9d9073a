#pragma once

#include "core/tree/Unitable.h"

#include <sigc++/signal.h>

#include <string>

namespace ZemTree {

// A unit holding a plain string, such as a descriptor of an item. Saves it as the attribute `Value`.
class StringUnit : public Unitable {
public:
    using SignalValueChanged = sigc::signal<void, StringUnit*>;

    explicit StringUnit(const std::string& id = "", const LocalString& description = LocalString::Empty(),
                        const LocalString& secondText = LocalString::Empty(), const std::string& value = "");

    const std::string& getValue() const { return _value; }
    // Compares first; on a change stores and emits.
    void setValue(const std::string& value);

    SignalValueChanged& getSignalValueChanged() { return _signalValueChanged; }

protected:
    void _setExtendedXml(xmlpp::Element* own, const SerializationMode& mode) override;
    void _getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const override;
    // The report element carries the value as `Value`.
    xmlpp::Element* _getDisplayXmlCurrent(DisplayXmlParameters& parameters, xmlpp::Element* parent) const override;
    std::string _getDisplayXmlCurrentDataType() const override { return "String"; }

private:
    std::string _value;
    SignalValueChanged _signalValueChanged;
};

} // namespace ZemTree
