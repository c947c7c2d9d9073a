#include "contacts/ContactUnit.h"

#include "contacts/HardwareBasedUnitHelper.h"
#include "contacts/TextFormUnitXml.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/ScopedConnection.h"
#include "core/device/HardwareManager.h"
#include "core/device/HardwareVirtualChannels.h"
#include "core/device/HardwareVirtualChannelsHelper.h"
#include "core/device/IBinaryStateChannel.h"
#include "core/tree/BooleanProperty.h"
#include "core/tree/StringProperty.h"
#include "core/tree/TreeLocalization.h"
#include "core/tree/ValueErrors.h"
#include "localisation/TreeRelay.h"

#include <sigc++/functors/mem_fun.h>

#include <locale>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace ZemTree {

ContactUnit::ContactUnit(const std::string& id, const LocalString& description, const LocalString& secondText,
                         Data defaultData)
    : Unit<Data>(id, description, secondText, std::move(defaultData)), _hardwareWatcher(this)
{
    auto channelType = std::make_unique<StringProperty>(
        "ChannelType", LocalString(std::string(lng::TreeRelay::get("Properties.channelType"))), LocalString::Empty(),
        std::string());
    _channelTypeProperty = static_cast<StringProperty*>(_addPropertyInner(std::move(channelType)));
    _channelTypeProperty->getSignalValueOutChanged().connect(sigc::mem_fun(*this, &ContactUnit::_onChannelTypeChanged));

    auto enableState = std::make_unique<BooleanProperty>(
        "enableState", LocalString(std::string(lng::TreeRelay::get("Properties.enableState"))), LocalString::Empty(),
        true);
    _enableStateProperty = static_cast<BooleanProperty*>(_addPropertyInner(std::move(enableState)));

    _hardwareWatcher.getSignalParentHardwareChanged().connect(sigc::mem_fun(*this, &ContactUnit::_onHardwareUpdated));
}

ContactUnit::ContactUnit(const std::string& id)
    : ContactUnit(id, LocalString(std::string(lng::Tree::get("Units.zemolIn"))), LocalString::Empty(), nullptr)
{
}

ContactUnit::ContactUnit() : ContactUnit("ContactUnit") {}

ZemDevice::IBinaryStateChannel* ContactUnit::getValueChannel() const
{
    return HardwareBasedUnitHelper::getValueHardwareChannel(getHardware(), getValueOut().value.get(),
                                                            _getChannelType());
}

void ContactUnit::setXml(xmlpp::Element* own, const SerializationMode& mode)
{
    struct ReadingGuard {
        bool& flag;
        bool before;
        ~ReadingGuard() { flag = before; }
    } guard{_isReadingXml, _isReadingXml};
    _isReadingXml = true;
    Unit<Data>::setXml(own, mode);
}

ContactUnit::Data ContactUnit::_createDefaultData() const
{
    return std::make_shared<Contact>(1, true);
}

ContactUnit::Data ContactUnit::_cloneData(const Data& data) const
{
    if (!data)
        return data;
    return std::make_shared<Contact>(data->getNumber(), data->getIsNormalOpen());
}

// Changes a given object in place, so that data set again as the same object fires nothing of its own.
ContactUnit::Data ContactUnit::_coerceSetData(const Data& data)
{
    Data contact = data ? data : std::make_shared<Contact>(1, true);
    ZemDevice::HardwareManager* const hardware = getHardware();
    if (hardware == nullptr || !contact->getPath().empty())
        return contact;
    contact->setPath(
        HardwareBasedUnitHelper::getDefaultHardwareChannelPath(hardware, _getChannelType(), contact->getIndex()));
    return contact;
}

std::unique_ptr<Zem::Out<ContactUnit::Data>> ContactUnit::_coerceValueOut(std::unique_ptr<Zem::Out<Data>> out) const
{
    ZemDevice::HardwareManager* const hardware = getHardware();
    if (hardware == nullptr)
        return out;
    if (HardwareBasedUnitHelper::getValueHardwareChannel(hardware, out->value.get(), _getChannelType()) != nullptr)
        return out;
    auto missing = std::make_unique<Zem::Out<Data>>();
    missing->value = std::make_shared<Contact>("", true);
    missing->error = MissingElementError::getInstance();
    return missing;
}

ContactUnit::Data ContactUnit::_createDataFromXml(xmlpp::Element* element) const
{
    const xmlpp::TextNode* const textNode = element->get_child_text();
    if (textNode == nullptr)
        return nullptr;
    const std::string text = textNode->get_content();
    if (text.empty())
        return nullptr;
    Contact contact(1, true);
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    contact << stream;
    if (stream.bad() || stream.fail())
        throw std::runtime_error("ContactUnit data parse error");
    return std::make_shared<Contact>(contact);
}

void ContactUnit::_getDataXml(const Data& data, xmlpp::Element* element) const
{
    TextFormUnitXml::write(data, element);
}

// A channel shows its place in the test set as the user knows it; without one the contact's text stands.
void ContactUnit::_getDisplayXmlCurrentValue(DisplayXmlParameters& /*parameters*/, xmlpp::Element* element) const
{
    const Data& contact = getValueOut().value;
    if (!contact)
        return;
    std::string text;
    ZemDevice::HardwareManager* const hardware = getHardware();
    if (hardware != nullptr) {
        if (ZemDevice::IBinaryStateChannel* const channel = getValueChannel())
            text = ZemDevice::HardwareVirtualChannelsHelper::getPathDescription(hardware->getVirtualChannels(),
                                                                                dynamic_cast<Node*>(channel), "");
    }
    if (text.empty())
        text = Zem::convertToString<Data, true, true>(contact);
    element->add_child_text(text);
}

const std::string& ContactUnit::_getChannelType() const
{
    return _channelTypeProperty->getValueOut().value;
}

// A new family makes the former contact meaningless: the unit starts over with contact 1 of that family. While
// the unit is read, the contact read before the property belongs to the saved family already and stays.
void ContactUnit::_onChannelTypeChanged()
{
    if (_isReadingXml) {
        _onValueOutChanged();
        return;
    }
    Value<Data>::setData(_coerceSetData(nullptr));
    if (getIsFormulaSource())
        _onValueOutChanged();
}

void ContactUnit::_onHardwareUpdated()
{
    TextFormUnitXml::followHardware(
        getNativeData(), getIsFormulaSource(), [this](const Data& data) { return _coerceSetData(data); },
        [this](const Data& data) { Value<Data>::setData(data); }, [this] { _onValueOutChanged(); },
        getSignalHardwareChanged());
}

} // namespace ZemTree
