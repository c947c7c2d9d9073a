#pragma once

#include "core/tree/LocalString.h"
#include "core/tree/Node.h"

#include <string>

namespace ZemTree {

// One allowed value of an EnumLimiter: the text stored in the data, and the text shown for it. The value is
// also the item's key. Saves the value as the attribute `Value` and the display as the child `Display`.
class EnumItem : public Node {
public:
    explicit EnumItem(const std::string& value = "", const LocalString& display = LocalString::Empty());

    const std::string& getValue() const { return _value; }
    LocalString getDisplay() const { return _display; }

protected:
    void _setExtendedXml(xmlpp::Element* own, const SerializationMode& mode) override;
    void _getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const override;
    // The limiter rebuilds its items itself, so the element needs no class name.
    bool _isNeedClassNameSerialization(const SerializationMode&) const override { return false; }

private:
    std::string _value;
    LocalString _display;
};

} // namespace ZemTree
