#pragma once

#include "core/common/Out.h"
#include "core/tree/IValueOut.h"
#include "core/tree/LocalString.h"
#include "core/tree/Unitable.h"

#include <sigc++/signal.h>

#include <string>

namespace ZemTree {

// What the property nodes share: a small typed value hung under a unit with `_addPropertyInner`, saved with
// its owner as the attribute `Value` of its element and readable by anyone as an IValueOut. A property's value
// is always good: its error is null. Properties are details of their unit and write no report of their own.
class PropertyBase : public Unitable, public IValueOut {
public:
    const Zem::ErrorPointer& getError() const override;

    // Fires after the value changed, right after the value-out signal.
    sigc::signal<void>& getSignalValueChanged() { return _signalValueChanged; }

protected:
    PropertyBase(const std::string& id, const LocalString& description, const LocalString& secondText);

    // The text form of the value, as saved.
    virtual std::string _getValueText() const = 0;
    // Sets the value from its text form through the setter; false, changing nothing, for a text that does not
    // convert.
    virtual bool _trySetValueText(const std::string& text) = 0;

    // Emits the value-out signal and then the value signal.
    void _emitValueChanged();

    void _setExtendedXml(xmlpp::Element* own, const SerializationMode& mode) override;
    void _getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const override;
    xmlpp::Element* _getDisplayXmlCurrent(DisplayXmlParameters& parameters, xmlpp::Element* parent) const override;

private:
    sigc::signal<void> _signalValueChanged;
};

} // namespace ZemTree
