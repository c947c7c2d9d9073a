#include "contacts/ContactCollectionUnit.h"

#include "contacts/ContactMode.h"
#include "contacts/HardwareBasedUnitHelper.h"
#include "contacts/TextFormUnitXml.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/ScopedConnection.h"
#include "core/device/IBinaryStateChannel.h"
#include "core/tree/TreeLocalization.h"
#include "core/tree/ValueErrors.h"

#include <sigc++/functors/mem_fun.h>

#include <stdexcept>
#include <utility>

namespace ZemTree {

ContactCollectionUnit::ContactCollectionUnit(const std::string& id, const LocalString& description,
                                             const LocalString& secondText, Data defaultData,
                                             std::shared_ptr<EnumLimiter> limiter)
    : EnumLimitedUnit<Data>(id, description, secondText, std::move(limiter)), _hardwareWatcher(this)
{
    Value<Data>::setData(defaultData);
    _hardwareWatcher.getSignalParentHardwareChanged().connect(
        sigc::mem_fun(*this, &ContactCollectionUnit::_onHardwareUpdated));
}

ContactCollectionUnit::ContactCollectionUnit(const std::string& id)
    : ContactCollectionUnit(id, LocalString(std::string(lng::Tree::get("Units.zemolOutCollection"))),
                            LocalString::Empty(), nullptr, std::shared_ptr<EnumLimiter>())
{
}

ContactCollectionUnit::ContactCollectionUnit() : ContactCollectionUnit("ContactCollectionUnit") {}

EnumLimiter* ContactCollectionUnit::getActualLimiter() const
{
    EnumLimiter* const limiter = getLimiter();
    if (limiter != nullptr && !limiter->empty())
        return limiter;
    return ContactMode::getDefaultHardwareOutLimiter().get();
}

ZemDevice::IBinaryStateChannel* ContactCollectionUnit::getValueChannel(ContactElement* element) const
{
    return HardwareBasedUnitHelper::getValueHardwareChannel(getHardware(), element, _getChannelType());
}

ContactCollectionUnit::Data ContactCollectionUnit::_createDefaultData() const
{
    return std::make_shared<ContactCollection>();
}

ContactCollectionUnit::Data ContactCollectionUnit::_cloneData(const Data& data) const
{
    if (!data)
        return data;
    return data->clone();
}

// Elements without a path get the path of their number; the collection announces all of it once. A number
// behind the channels finds no path and changes nothing.
ContactCollectionUnit::Data ContactCollectionUnit::_coerceSetData(const Data& data)
{
    Data collection = data ? data : std::make_shared<ContactCollection>();
    ZemDevice::HardwareManager* const hardware = getHardware();
    if (hardware == nullptr)
        return collection;
    bool isChanged = false;
    {
        const StructureSignalBlock block(*collection);
        const std::string channelType = _getChannelType();
        for (ContactElement* element : *collection) {
            if (element == nullptr || !element->getPath().empty())
                continue;
            const std::string path =
                HardwareBasedUnitHelper::getDefaultHardwareChannelPath(hardware, channelType, element->getIndex());
            if (path.empty())
                continue;
            element->setPath(path);
            isChanged = true;
        }
    }
    if (isChanged)
        collection->signalStructureChanged.emit();
    return collection;
}

std::unique_ptr<Zem::Out<ContactCollectionUnit::Data>>
ContactCollectionUnit::_coerceValueOut(std::unique_ptr<Zem::Out<Data>> out) const
{
    if (getHardware() == nullptr || !out->value)
        return out;
    for (ContactElement* element : *out->value) {
        if (getValueChannel(element) != nullptr)
            continue;
        auto missing = std::make_unique<Zem::Out<Data>>();
        missing->value = std::make_shared<ContactCollection>();
        missing->error = MissingElementError::getInstance();
        return missing;
    }
    return out;
}

ContactCollectionUnit::Data ContactCollectionUnit::_createDataFromXml(xmlpp::Element* element) const
{
    return TextFormUnitXml::read<Data>(element, "ContactCollectionUnit");
}

void ContactCollectionUnit::_getDataXml(const Data& data, xmlpp::Element* element) const
{
    TextFormUnitXml::write(data, element);
}

void ContactCollectionUnit::_getDisplayXmlCurrentValue(DisplayXmlParameters& /*parameters*/,
                                                       xmlpp::Element* element) const
{
    TextFormUnitXml::write(getValueOut().value, element);
}

void ContactCollectionUnit::_onHardwareUpdated()
{
    TextFormUnitXml::followHardware(
        getNativeData(), getIsFormulaSource(), [this](const Data& data) { return _coerceSetData(data); },
        [this](const Data& data) { Value<Data>::setData(data); }, [this] { _onValueOutChanged(); },
        getSignalHardwareChanged());
}

} // namespace ZemTree
