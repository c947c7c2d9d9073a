#pragma once

#include "contacts/ContactCollection.h"
#include "core/common/Out.h"
#include "core/common/XmlInclude.h"
#include "core/tree/EnumLimiter.h"
#include "core/tree/HardwareContainerRootWatcher.h"
#include "core/tree/IHardwareContainer.h"
#include "core/tree/LocalString.h"
#include "values/EnumLimitedUnit.h"

#include <memory>
#include <string>

namespace ZemDevice {
class IBinaryStateChannel;
}

namespace ZemTree {

class DisplayXmlParameters;

// A unit holding the contact elements of a test, tied to the hardware found above it like ContactUnit: elements
// given only by number get the paths of their channels, and one element whose channel the hardware does not have
// blanks the whole value out with MissingElementError. The limiter lists the modes an element may take; an empty
// one stands for all modes of ContactMode. The channel family is fixed by the concrete class.
//
// The data is saved as the collection's text form.
class ContactCollectionUnit : public EnumLimitedUnit<std::shared_ptr<ContactCollection>>,
                              public virtual IHardwareContainer {
public:
    using Data = std::shared_ptr<ContactCollection>;

    // A null `limiter` gives the unit its own, empty one. The working value starts as `defaultData`.
    ContactCollectionUnit(const std::string& id, const LocalString& description, const LocalString& secondText,
                          Data defaultData, std::shared_ptr<EnumLimiter> limiter);
    explicit ContactCollectionUnit(const std::string& id);
    ContactCollectionUnit();

    // The limiter in force, or the shared limiter of all modes while that one is empty.
    EnumLimiter* getActualLimiter() const;

    // The channel of one element on the present hardware, or null.
    ZemDevice::IBinaryStateChannel* getValueChannel(ContactElement* element) const;

    ZemDevice::HardwareManager* getHardware() const override { return _hardwareWatcher.getHardware(); }

protected:
    Data _createDefaultData() const override;
    Data _cloneData(const Data& data) const override;
    Data _coerceSetData(const Data& data) override;
    std::unique_ptr<Zem::Out<Data>> _coerceValueOut(std::unique_ptr<Zem::Out<Data>> out) const override;
    Data _createDataFromXml(xmlpp::Element* element) const override;
    void _getDataXml(const Data& data, xmlpp::Element* element) const override;
    void _getDisplayXmlCurrentValue(DisplayXmlParameters& parameters, xmlpp::Element* element) const override;
    std::string _getDisplayXmlCurrentDataType() const override { return "ContactCollection"; }

    // The channel family of the elements, see HardwareBasedUnitHelper.
    virtual std::string _getChannelType() const = 0;

private:
    void _onHardwareUpdated();

    HardwareContainerRootWatcher _hardwareWatcher;
};

} // namespace ZemTree
