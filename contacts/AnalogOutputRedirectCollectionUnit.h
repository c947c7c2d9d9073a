#pragma once

#include "contacts/AnalogOutputRedirectCollection.h"
#include "core/common/Out.h"
#include "core/common/XmlInclude.h"
#include "core/tree/HardwareContainerRootWatcher.h"
#include "core/tree/IHardwareContainer.h"
#include "core/tree/LocalString.h"
#include "values/Unit.h"

#include <memory>
#include <string>

namespace ZemDevice {
class IVirtualAnalogOutputGroup;
}

namespace ZemTree {

class DisplayXmlParameters;
class NumericProperty;

// A unit holding where each analog output group of a test goes. The property `GroupCount` fixes the length of
// the list: the unit adds targets (numbered from 1 on) or cuts them from the end as the count changes, and gives
// targets without a path the path of the next analog group of the hardware above. A list of another length, a
// count that is negative or no number, or a group the hardware does not have shows MissingElementError in the
// value out.
//
// The data is saved as the collection's text form.
class AnalogOutputRedirectCollectionUnit : public Unit<std::shared_ptr<AnalogOutputRedirectCollection>>,
                                           public virtual IHardwareContainer {
public:
    using Data = std::shared_ptr<AnalogOutputRedirectCollection>;

    // Counts from this size on are not followed: the list stays as it is and the value out reports the error.
    static constexpr double MaxGroupCount = 4096.0;

    AnalogOutputRedirectCollectionUnit(const std::string& id, const LocalString& description,
                                       const LocalString& secondText, Data defaultData, double groupCount);
    explicit AnalogOutputRedirectCollectionUnit(const std::string& id);
    AnalogOutputRedirectCollectionUnit();

    NumericProperty* getGroupCountProperty() const { return _groupCountProperty; }

    // The group that `target` names on the present hardware; null without hardware or when it has no such group.
    ZemDevice::IVirtualAnalogOutputGroup* getValueGroup(AnalogOutputTarget* target) const;

    ZemDevice::HardwareManager* getHardware() const override { return _hardwareWatcher.getHardware(); }

protected:
    Data _createDefaultData() const override;
    Data _cloneData(const Data& data) const override;
    Data _coerceSetData(const Data& data) override;
    std::unique_ptr<Zem::Out<Data>> _coerceValueOut(std::unique_ptr<Zem::Out<Data>> out) const override;
    Data _createDataFromXml(xmlpp::Element* element) const override;
    void _getDataXml(const Data& data, xmlpp::Element* element) const override;
    void _getDisplayXmlCurrentValue(DisplayXmlParameters& parameters, xmlpp::Element* element) const override;
    std::string _getDisplayXmlCurrentDataType() const override { return "AnalogOutputRedirectCollection"; }

    // Brings `data` (a new collection when null) to the group count and gives paths to the targets without one.
    Data _coerceGetDataImpl(const Data& data) const;

private:
    // Whether the present count can be followed, and the length it asks for.
    bool _tryGetWantedCount(long& wanted) const;
    void _onGroupCountChanged();
    void _onHardwareUpdated();

    NumericProperty* _groupCountProperty = nullptr;
    HardwareContainerRootWatcher _hardwareWatcher;
};

} // namespace ZemTree
