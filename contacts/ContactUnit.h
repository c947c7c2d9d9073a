#pragma once

#include "contacts/Contact.h"
#include "core/common/Out.h"
#include "core/common/XmlInclude.h"
#include "core/tree/HardwareContainerRootWatcher.h"
#include "core/tree/IHardwareContainer.h"
#include "core/tree/LocalString.h"
#include "core/tree/SerializationMode.h"
#include "values/Unit.h"

#include <memory>
#include <string>

namespace ZemDevice {
class IBinaryStateChannel;
}

namespace ZemTree {

class BooleanProperty;
class DisplayXmlParameters;
class StringProperty;

// A unit holding one binary contact of a test. It ties the contact to the hardware found above it: a contact given
// only by number gets the path of that channel of its family when it is set, and a contact whose channel the
// hardware does not have shows MissingElementError in its value out. Without hardware the contact stands as
// given.
//
// Properties: `ChannelType` (the channel family, see HardwareBasedUnitHelper; a change starts over with contact 1
// of the new family) and `enableState` (true by default). The data is saved as the contact's text form.
class ContactUnit : public Unit<std::shared_ptr<Contact>>, public virtual IHardwareContainer {
public:
    using Data = std::shared_ptr<Contact>;

    ContactUnit(const std::string& id, const LocalString& description, const LocalString& secondText, Data defaultData);
    explicit ContactUnit(const std::string& id);
    ContactUnit();

    StringProperty* getChannelTypeProperty() const { return _channelTypeProperty; }
    BooleanProperty* getEnableStateProperty() const { return _enableStateProperty; }

    // The channel that the present value out names on the present hardware, or null.
    ZemDevice::IBinaryStateChannel* getValueChannel() const;

    ZemDevice::HardwareManager* getHardware() const override { return _hardwareWatcher.getHardware(); }

    // Reading keeps the contact read from the file when the saved channel type comes after it.
    void setXml(xmlpp::Element* own, const SerializationMode& mode) override;

protected:
    Data _createDefaultData() const override;
    // The path is left behind on purpose: the clone gets the path of its number again from _coerceSetData.
    Data _cloneData(const Data& data) const override;
    Data _coerceSetData(const Data& data) override;
    std::unique_ptr<Zem::Out<Data>> _coerceValueOut(std::unique_ptr<Zem::Out<Data>> out) const override;
    Data _createDataFromXml(xmlpp::Element* element) const override;
    void _getDataXml(const Data& data, xmlpp::Element* element) const override;
    void _getDisplayXmlCurrentValue(DisplayXmlParameters& parameters, xmlpp::Element* element) const override;
    std::string _getDisplayXmlCurrentDataType() const override { return "Contact"; }

    // The family of the present value, from `ChannelType`.
    const std::string& _getChannelType() const;

private:
    void _onChannelTypeChanged();
    void _onHardwareUpdated();

    StringProperty* _channelTypeProperty = nullptr;
    BooleanProperty* _enableStateProperty = nullptr;
    HardwareContainerRootWatcher _hardwareWatcher;
    bool _isReadingXml = false;
};

} // namespace ZemTree
