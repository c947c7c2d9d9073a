#include "contacts/AnalogOutputRedirectCollectionUnit.h"

#include "contacts/HardwareBasedUnitHelper.h"
#include "contacts/TextFormUnitXml.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/ScopedConnection.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/tree/NumericProperty.h"
#include "core/tree/TreeLocalization.h"
#include "core/tree/ValueErrors.h"
#include "localisation/TreeRelay.h"

#include <sigc++/functors/mem_fun.h>

#include <cmath>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>

namespace ZemTree {

AnalogOutputRedirectCollectionUnit::AnalogOutputRedirectCollectionUnit(const std::string& id,
                                                                       const LocalString& description,
                                                                       const LocalString& secondText, Data defaultData,
                                                                       double groupCount)
    : Unit<Data>(id, description, secondText, defaultData), _hardwareWatcher(this)
{
    auto groupCountProperty = std::make_unique<NumericProperty>(
        "GroupCount", LocalString(std::string(lng::TreeRelay::get("Properties.count"))), LocalString::Empty(),
        groupCount);
    _groupCountProperty = static_cast<NumericProperty*>(_addPropertyInner(std::move(groupCountProperty)));
    _groupCountProperty->getSignalValueOutChanged().connect(
        sigc::mem_fun(*this, &AnalogOutputRedirectCollectionUnit::_onGroupCountChanged));
    Value<Data>::setData(_coerceGetDataImpl(defaultData));
    _hardwareWatcher.getSignalParentHardwareChanged().connect(
        sigc::mem_fun(*this, &AnalogOutputRedirectCollectionUnit::_onHardwareUpdated));
}

AnalogOutputRedirectCollectionUnit::AnalogOutputRedirectCollectionUnit(const std::string& id)
    : AnalogOutputRedirectCollectionUnit(id, LocalString(std::string(lng::Tree::get("Units.analogOutputRedirect"))),
                                         LocalString::Empty(), nullptr, 0.0)
{
}

AnalogOutputRedirectCollectionUnit::AnalogOutputRedirectCollectionUnit()
    : AnalogOutputRedirectCollectionUnit("AnalogOutputRedirectCollectionUnit")
{
}

ZemDevice::IVirtualAnalogOutputGroup*
AnalogOutputRedirectCollectionUnit::getValueGroup(AnalogOutputTarget* target) const
{
    ZemDevice::HardwareManager* const hardware = getHardware();
    if (hardware == nullptr || target == nullptr)
        return nullptr;
    return HardwareBasedUnitHelper::getHardwareAnalogOutputGroup(hardware, target->getPath());
}

AnalogOutputRedirectCollectionUnit::Data AnalogOutputRedirectCollectionUnit::_createDefaultData() const
{
    return std::make_shared<AnalogOutputRedirectCollection>();
}

AnalogOutputRedirectCollectionUnit::Data AnalogOutputRedirectCollectionUnit::_cloneData(const Data& data) const
{
    if (!data)
        return data;
    return data->clone();
}

AnalogOutputRedirectCollectionUnit::Data AnalogOutputRedirectCollectionUnit::_coerceSetData(const Data& data)
{
    return _coerceGetDataImpl(data);
}

// The count holds also without hardware. The targets without a path take the analog groups one after another,
// counted among themselves, not by their place in the list, and pass over a group that another target names
// already: one group driven twice makes no sense, and without that rule a list saved on a test set with fewer
// groups than targets would come back changed once the hardware arrives after the load (the target resolved
// before the save holds the first group, and the next one without a path would take it again). Without hardware
// their path stays empty, and each pass still counts that as a change.
AnalogOutputRedirectCollectionUnit::Data AnalogOutputRedirectCollectionUnit::_coerceGetDataImpl(const Data& data) const
{
    Data collection = data ? data : std::make_shared<AnalogOutputRedirectCollection>();
    bool isChanged = false;
    {
        const StructureSignalBlock block(*collection);
        long wanted = 0;
        if (_tryGetWantedCount(wanted)) {
            const long size = static_cast<long>(collection->size());
            if (size < wanted) {
                for (long number = 1; number <= wanted - size; ++number)
                    collection->add(std::make_unique<AnalogOutputTarget>(static_cast<int>(number)));
                isChanged = true;
            }
            else if (size > wanted) {
                for (long count = size - wanted; count > 0; --count)
                    collection->remove(collection->back());
                isChanged = true;
            }
        }
        ZemDevice::HardwareManager* const hardware = getHardware();
        std::set<std::string> named;
        for (const AnalogOutputTarget* target : *collection) {
            if (target != nullptr && !target->getPath().empty())
                named.insert(target->getPath());
        }
        long index = 0;
        for (AnalogOutputTarget* target : *collection) {
            if (target == nullptr || !target->getPath().empty())
                continue;
            std::string path = HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(hardware, index);
            while (!path.empty() && named.count(path) != 0)
                path = HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(hardware, ++index);
            target->setPath(path);
            if (!path.empty())
                named.insert(path);
            ++index;
            isChanged = true;
        }
    }
    if (isChanged)
        collection->signalStructureChanged.emit();
    return collection;
}

std::unique_ptr<Zem::Out<AnalogOutputRedirectCollectionUnit::Data>>
AnalogOutputRedirectCollectionUnit::_coerceValueOut(std::unique_ptr<Zem::Out<Data>> out) const
{
    bool isGood = false;
    long wanted = 0;
    if (out->value && _tryGetWantedCount(wanted) && static_cast<long>(out->value->size()) == wanted) {
        isGood = true;
        if (getHardware() != nullptr) {
            for (AnalogOutputTarget* target : *out->value) {
                if (getValueGroup(target) == nullptr) {
                    isGood = false;
                    break;
                }
            }
        }
    }
    if (isGood)
        return out;
    auto missing = std::make_unique<Zem::Out<Data>>();
    missing->value = _coerceGetDataImpl(nullptr);
    missing->error = MissingElementError::getInstance();
    return missing;
}

AnalogOutputRedirectCollectionUnit::Data
AnalogOutputRedirectCollectionUnit::_createDataFromXml(xmlpp::Element* element) const
{
    return TextFormUnitXml::read<Data>(element, "AnalogOutputRedirectCollectionUnit");
}

void AnalogOutputRedirectCollectionUnit::_getDataXml(const Data& data, xmlpp::Element* element) const
{
    TextFormUnitXml::write(data, element);
}

void AnalogOutputRedirectCollectionUnit::_getDisplayXmlCurrentValue(DisplayXmlParameters& /*parameters*/,
                                                                    xmlpp::Element* element) const
{
    TextFormUnitXml::write(getValueOut().value, element);
}

// A count that is negative, no number or too large to follow leaves the list as it is. A fraction is cut.
bool AnalogOutputRedirectCollectionUnit::_tryGetWantedCount(long& wanted) const
{
    const double count = _groupCountProperty != nullptr ? _groupCountProperty->getValueOut().value : 0.0;
    if (!(count >= 0.0) || !(count < MaxGroupCount))
        return false;
    wanted = static_cast<long>(count);
    return true;
}

// The value out follows the count even when the list was right already, as its check depends on the count.
void AnalogOutputRedirectCollectionUnit::_onGroupCountChanged()
{
    Value<Data>::setData(_coerceGetDataImpl(getNativeData()));
    _onValueOutChanged();
}

void AnalogOutputRedirectCollectionUnit::_onHardwareUpdated()
{
    TextFormUnitXml::followHardware(
        getNativeData(), getIsFormulaSource(), [this](const Data& data) { return _coerceSetData(data); },
        [this](const Data& data) { Value<Data>::setData(data); }, [this] { _onValueOutChanged(); },
        getSignalHardwareChanged());
}

} // namespace ZemTree
