#pragma once

#include "core/tree/EditableState.h"
#include "core/tree/Node.h"

#include <sigc++/signal.h>

#include <string>

namespace ZemTree {

// A node that the user sees as a unit: it can be hidden, switched off and made read-only, and it has a second
// text beside its description. Saves `IsActive` (when the class wants it) and `IsHidden` on its element, and
// `SecondText` among its descriptors.
class Unitable : public Node {
public:
    using SignalStateChanged = sigc::signal<void, Unitable*>;

    explicit Unitable(const std::string& id = "", const LocalString& description = LocalString::Empty(),
                      const LocalString& secondText = LocalString::Empty());

    std::string getSecondText() const { return _secondText.getValue(); }
    const LocalString& getLocalSecondText() const { return _secondText; }
    // Compares first; on a change stores and emits the second-text signal.
    void setSecondText(const LocalString& secondText);

    bool isHidden() const { return _isHidden; }
    // Compares first; on a change stores, runs _onIsHiddenChanged() and then emits.
    void setIsHidden(bool isHidden);
    bool isActive() const { return _isActive; }
    // Compares first; on a change stores and emits.
    void setIsActive(bool isActive);

    EditableState& getIsEditable() { return _isEditable; }
    const EditableState& getIsEditable() const { return _isEditable; }

    // A hidden unit and everything below it stay out of the report.
    void getDisplayXml(DisplayXmlParameters& parameters, xmlpp::Element* parent) const override;

    SignalStateChanged& getSignalIsHiddenChanged() { return _signalIsHiddenChanged; }
    SignalStateChanged& getSignalIsActiveChanged() { return _signalIsActiveChanged; }
    SignalStateChanged& getSignalSecondTextChanged() { return _signalSecondTextChanged; }

protected:
    // Whether `IsActive` is saved and read. A class whose active state follows from elsewhere says false.
    virtual bool _isActiveSerializable() const { return true; }
    // The hidden state changed; runs before the signal.
    virtual void _onIsHiddenChanged() {}

    void _setExtendedXml(xmlpp::Element* own, const SerializationMode& mode) override;
    void _getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const override;
    void _setDescriptorsXml(xmlpp::Element* own, const SerializationMode& mode) override;
    void _getDescriptorsXml(xmlpp::Element* own, const SerializationMode& mode) const override;
    // The node's report element plus `SecondText` when there is one and `IsActive` "false" when switched off.
    xmlpp::Element* _getDisplayXmlCurrent(DisplayXmlParameters& parameters, xmlpp::Element* parent) const override;

    // Reads the boolean attribute `name` into `value`. Absent leaves it; a word other than true/false/1/0
    // is reported and leaves it. Returns whether `value` was set.
    bool _readBoolAttribute(xmlpp::Element* own, const std::string& name, bool& value,
                            const SerializationMode& mode) const;

private:
    LocalString _secondText;
    bool _isHidden = false;
    bool _isActive = true;
    EditableState _isEditable;
    SignalStateChanged _signalIsHiddenChanged;
    SignalStateChanged _signalIsActiveChanged;
    SignalStateChanged _signalSecondTextChanged;
};

} // namespace ZemTree
