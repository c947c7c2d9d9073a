#include "ContactUnitsTestSupport.h"
#include "TemporaryFolder.h"
#include "contacts/AnalogOutputRedirectCollectionUnit.h"
#include "contacts/Contact.h"
#include "contacts/ContactUnit.h"
#include "contacts/HardwareBasedUnitHelper.h"
#include "contacts/HardwareInContactUnit.h"
#include "contacts/HardwareOutContactCollectionUnit.h"
#include "contacts/HardwareOutContactUnit.h"
#include "containers/DefendContainer.h"
#include "containers/HierarchicalCollectionContainer.h"
#include "containers/HierarchicalContainer.h"
#include "containers/ProjectFile.h"
#include "containers/SettingsContainer.h"
#include "core/device/HardwareManager.h"
#include "core/device/HardwareVirtualChannels.h"
#include "core/device/IBinaryStateChannel.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/device/IVirtualBinaryOutputChannel.h"
#include "core/tree/NodeFactory.h"
#include "core/tree/ValueErrors.h"
#include "evaluation/IHierarchicalContainer.h"

#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

namespace {

using ContactUnitsTest::makeLayout;
using ZemDevice::HardwareGroupLayout;
using ZemDevice::HardwareManager;
using ZemTree::Contact;
using ZemTree::HardwareBasedUnitHelper;

TEST(HardwareBasedUnitHelperTest, DefaultChannelPathCountsThroughAllGroupsOfTheFamily)
{
    // Two input groups of 8, one output group of 8.
    HardwareManager hardware;
    const struct {
        const char* text;
        const char* channelType;
        long index;
        const char* path;
    } rows[] = {
        {"first input", "hardwareBinaryInput", 0, "BinaryInputs/Group 1/Input 1"},
        {"index 9 is the second channel of the second group", "hardwareBinaryInput", 9, "BinaryInputs/Group 2/Input 2"},
        {"behind the last input", "hardwareBinaryInput", 16, ""},
        {"a negative index", "hardwareBinaryInput", -1, ""},
        {"the empty type means inputs", "", 3, "BinaryInputs/Group 1/Input 4"},
        {"an unknown type means inputs", "somethingElse", 8, "BinaryInputs/Group 2/Input 1"},
        {"an output", "hardwareBinaryOutput", 7, "BinaryOutputs/Group 1/Output 8"},
        {"outputs end sooner", "hardwareBinaryOutput", 8, ""},
        {"an input of the relay is an output of the test set", "testObjectBinaryInput", 0,
         "BinaryOutputs/Group 1/Output 1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.path,
                  HardwareBasedUnitHelper::getDefaultHardwareChannelPath(&hardware, row.channelType, row.index));
    }
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareChannelPath(nullptr, "hardwareBinaryInput", 0));
}

TEST(HardwareBasedUnitHelperTest, GroupOrderAndEmptyGroupsDecideTheDefaultPaths)
{
    ZemDevice::HardwareLayout layout;
    layout.binaryInputGroups = {HardwareGroupLayout{0, "", {}}, HardwareGroupLayout{2, "", {}},
                                HardwareGroupLayout{3, "", {}}};
    HardwareManager hardware(layout);
    EXPECT_EQ("BinaryInputs/Group 2/Input 1", HardwareBasedUnitHelper::getDefaultHardwareChannelPath(&hardware, "", 0));
    EXPECT_EQ("BinaryInputs/Group 3/Input 1", HardwareBasedUnitHelper::getDefaultHardwareChannelPath(&hardware, "", 2));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareChannelPath(&hardware, "", 5));

    HardwareManager empty(makeLayout(0, 0, 0));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareChannelPath(&empty, "", 0));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareChannelPath(&empty, "hardwareBinaryOutput", 0));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(&empty, 0));
}

TEST(HardwareBasedUnitHelperTest, DefaultAnalogGroupPathByIndex)
{
    HardwareManager hardware; // three analog groups
    EXPECT_EQ("AnalogOutputs/Group 1", HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(&hardware, 0));
    EXPECT_EQ("AnalogOutputs/Group 3", HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(&hardware, 2));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(&hardware, 3));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(&hardware, -1));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(nullptr, 0));
}

TEST(HardwareBasedUnitHelperTest, LookupsFindOnlyTheWantedKind)
{
    HardwareManager hardware;
    ZemDevice::HardwareVirtualChannels* const channels = hardware.getVirtualChannels();
    ZemDevice::IVirtualBinaryInputChannel* const input = channels->binaryInputGroups()[1]->getChannel(2);
    ZemDevice::IVirtualBinaryOutputChannel* const output = channels->binaryOutputGroups()[0]->getChannel(0);
    ZemDevice::IVirtualAnalogOutputGroup* const analog = channels->analogOutputGroups()[1];

    EXPECT_EQ(input, HardwareBasedUnitHelper::getHardwareBinaryInputChannel(&hardware, "BinaryInputs/Group 2/Input 3"));
    EXPECT_EQ(output,
              HardwareBasedUnitHelper::getHardwareBinaryOutputChannel(&hardware, "BinaryOutputs/Group 1/Output 1"));
    EXPECT_EQ(analog, HardwareBasedUnitHelper::getHardwareAnalogOutputGroup(&hardware, "AnalogOutputs/Group 2"));

    const struct {
        const char* text;
        const char* path;
    } misses[] = {
        {"empty path", ""},
        {"a group, not a channel", "BinaryInputs/Group 1"},
        {"no such channel", "BinaryInputs/Group 1/Input 9"},
        {"a malformed path", "BinaryInputs//Input 1"},
        {"above the root", "../BinaryInputs/Group 1/Input 1"},
    };
    for (const auto& miss : misses) {
        SCOPED_TRACE(miss.text);
        EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getHardwareBinaryInputChannel(&hardware, miss.path));
        EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getHardwareBinaryOutputChannel(&hardware, miss.path));
        EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getHardwareAnalogOutputGroup(&hardware, miss.path));
    }
    // Another kind at the path is no match.
    EXPECT_EQ(nullptr,
              HardwareBasedUnitHelper::getHardwareBinaryOutputChannel(&hardware, "BinaryInputs/Group 2/Input 3"));
    EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getHardwareAnalogOutputGroup(&hardware, "BinaryOutputs/Group 1"));
    EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getHardwareBinaryInputChannel(nullptr, "BinaryInputs/Group 2/Input 3"));
}

TEST(HardwareBasedUnitHelperTest, ValueChannelFollowsTheFamilyOfTheChannelType)
{
    HardwareManager hardware;
    ZemDevice::HardwareVirtualChannels* const channels = hardware.getVirtualChannels();
    ZemDevice::IBinaryStateChannel* const input = channels->binaryInputGroups()[0]->getChannel(2);
    ZemDevice::IBinaryStateChannel* const output = channels->binaryOutputGroups()[0]->getChannel(2);
    const Contact inputContact("BinaryInputs/Group 1/Input 3", false);
    const Contact outputContact("BinaryOutputs/Group 1/Output 3", true);

    const struct {
        const char* channelType;
        ZemDevice::IBinaryStateChannel* forInput;
        ZemDevice::IBinaryStateChannel* forOutput;
    } rows[] = {
        {"", input, nullptr},
        {"hardwareBinaryInput", input, nullptr},
        {"hardwareBinaryOutput", nullptr, output},
        {"testObjectBinaryInput", nullptr, output},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.channelType);
        EXPECT_EQ(row.forInput,
                  HardwareBasedUnitHelper::getValueHardwareChannel(&hardware, &inputContact, row.channelType));
        EXPECT_EQ(row.forOutput,
                  HardwareBasedUnitHelper::getValueHardwareChannel(&hardware, &outputContact, row.channelType));
    }
    EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getValueHardwareChannel(&hardware, nullptr, ""));
    EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getValueHardwareChannel(nullptr, &inputContact, ""));
    // A number alone names no channel: only the path is looked up.
    const Contact byNumber(3, true);
    EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getValueHardwareChannel(&hardware, &byNumber, ""));
}

} // namespace

// Every hardware-bound unit, bound by path, by number, normally closed or empty, saved through ProjectFile, loaded
// into a fresh tree and saved again, with no hardware, with hardware that has the channel and with hardware that
// lacks it: the binding the user saved always comes back.

namespace {

using ZemTree::Node;

template <class UnitT> std::unique_ptr<UnitT> makeUnit()
{
    return std::make_unique<UnitT>("Binding");
}

template <> std::unique_ptr<ZemTree::AnalogOutputRedirectCollectionUnit> makeUnit()
{
    return std::make_unique<ZemTree::AnalogOutputRedirectCollectionUnit>("Binding", ZemTree::LocalString("Binding"),
                                                                         ZemTree::LocalString::Empty(), nullptr, 2.0);
}

// A protection whose settings hold one unit of the kind under test, so that the tree builds the unit itself and
// the file only carries its value.
template <class UnitT>
class BindingHolder : public ZemTree::DefendContainer, public virtual ZemTree::IHierarchicalContainer {
public:
    BindingHolder() : ZemTree::DefendContainer("Holder") {}

    UnitT* unit = nullptr;

protected:
    void _fillTemplate() override
    {
        ZemTree::DefendContainer::_fillTemplate();
        unit = getSettings()->add(makeUnit<UnitT>());
    }
};

template <class UnitT> std::string textOf(const typename UnitT::Data& data)
{
    return data ? Zem::convertToString<typename UnitT::Data, true, true>(data) : std::string("null");
}

std::string fileText(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

struct HardwareCase {
    const char* name;
    HardwareManager* hardware;
    bool lacksChannels;
};

// Saves a project holding `binding`, loads it into a fresh tree, saves again, and compares.
template <class UnitT>
void checkRoundTrip(const std::string& binding, const HardwareCase& hardwareCase, bool expectMissing)
{
    static const bool registered = ZemTree::NodeFactory::registerType<BindingHolder<UnitT>>();
    (void)registered;
    ZemTreeTest::TemporaryFolder folder;
    ZemTree::ProjectFile files;

    auto source = std::make_unique<ZemTree::HierarchicalContainer>("Root", ZemTree::LocalString("Root"), "");
    source->initContainer();
    auto* holder = source->getContainers()->add(std::make_unique<BindingHolder<UnitT>>());
    holder->initContainer();
    source->setHardware(hardwareCase.hardware);
    typename UnitT::Data data;
    ASSERT_TRUE((Zem::tryConvert<typename UnitT::Data, true, true>(binding, data))) << binding;
    holder->unit->setData(data);
    const std::string savedBinding = textOf<UnitT>(holder->unit->getNativeData());
    const std::string savedOut = textOf<UnitT>(holder->unit->getValueOut().value);
    const Zem::ErrorPointer savedError = holder->unit->getError();
    if (expectMissing) {
        EXPECT_EQ(ZemTree::MissingElementError::getInstance(), savedError);
    }
    files.save(*source, folder.file("first.xml"));

    std::unique_ptr<Node> loaded = files.load(folder.file("first.xml"));
    EXPECT_TRUE(files.getProblems().empty()) << files.getProblems().front();
    auto* const root = dynamic_cast<ZemTree::HierarchicalContainer*>(loaded.get());
    ASSERT_NE(nullptr, root);
    root->setHardware(hardwareCase.hardware);
    auto* const loadedHolder = dynamic_cast<BindingHolder<UnitT>*>(root->getContainers()->at(0));
    ASSERT_NE(nullptr, loadedHolder);
    UnitT* const unit = loadedHolder->unit;

    EXPECT_EQ(savedBinding, textOf<UnitT>(unit->getNativeData())) << "the binding the user saved";
    EXPECT_EQ(savedOut, textOf<UnitT>(unit->getValueOut().value));
    EXPECT_EQ(savedError, unit->getError());
    files.save(*root, folder.file("second.xml"));
    EXPECT_EQ(fileText(folder.file("first.xml")), fileText(folder.file("second.xml")));
}

TEST(BindingRoundTrip, EveryBoundUnitComesBackAsSaved)
{
    HardwareManager full;
    HardwareManager small(makeLayout(1, 0, 1)); // one input group, no outputs, one analog group
    const HardwareCase hardwareCases[] = {
        {"no hardware", nullptr, false},
        {"hardware that has the channels", &full, false},
        {"hardware that lacks them", &small, true},
    };
    struct Binding {
        const char* name;
        const char* text;
    };
    // Every non-empty binding names a channel beyond the small test set.
    const Binding inputs[] = {{"by path", "BinaryInputs/Group 2/Input 3"}, {"by number", "10"}, {"closed", "!12"}};
    const Binding outputs[] = {{"by path", "BinaryOutputs/Group 1/Output 7"}, {"by number", "6"}, {"closed", "!2"}};
    const Binding outputCollections[] = {{"by path", "!BinaryOutputs/Group 1/Output 7;RPO;1;0.5"},
                                         {"by number", "2;SC;0;0.5"},
                                         {"closed", "!3;OFF;0;0|4;SC;0.1;0.25"},
                                         {"empty", ""}};
    const Binding redirects[] = {
        {"by path", "AnalogOutputs/Group 3;AnalogOutputs/Group 1"}, {"by number", "2;3"}, {"empty", ""}};

    for (const HardwareCase& hardwareCase : hardwareCases) {
        SCOPED_TRACE(hardwareCase.name);
        const auto missing = [&](const Binding& binding) {
            return hardwareCase.lacksChannels && std::string(binding.text) != "";
        };
        for (const Binding& binding : inputs) {
            SCOPED_TRACE(binding.name);
            SCOPED_TRACE("ContactUnit");
            checkRoundTrip<ZemTree::ContactUnit>(binding.text, hardwareCase, missing(binding));
            SCOPED_TRACE("HardwareInContactUnit");
            checkRoundTrip<ZemTree::HardwareInContactUnit>(binding.text, hardwareCase, missing(binding));
        }
        for (const Binding& binding : outputs) {
            SCOPED_TRACE(binding.name);
            SCOPED_TRACE("HardwareOutContactUnit");
            checkRoundTrip<ZemTree::HardwareOutContactUnit>(binding.text, hardwareCase, missing(binding));
        }
        for (const Binding& binding : outputCollections) {
            SCOPED_TRACE(binding.name);
            SCOPED_TRACE("HardwareOutContactCollectionUnit");
            checkRoundTrip<ZemTree::HardwareOutContactCollectionUnit>(binding.text, hardwareCase, missing(binding));
        }
        for (const Binding& binding : redirects) {
            SCOPED_TRACE(binding.name);
            SCOPED_TRACE("AnalogOutputRedirectCollectionUnit");
            checkRoundTrip<ZemTree::AnalogOutputRedirectCollectionUnit>(binding.text, hardwareCase, missing(binding));
        }
    }
}

// The order in which a unit's value-out and hardware signals fire while `change` runs.
template <class UnitT> std::vector<std::string> signalsDuring(UnitT& unit, const std::function<void()>& change)
{
    std::vector<std::string> seen;
    sigc::connection out = unit.getSignalValueOutChanged().connect([&] { seen.push_back("value out"); });
    sigc::connection hardware = unit.getSignalHardwareChanged().connect([&] { seen.push_back("hardware"); });
    change();
    out.disconnect();
    hardware.disconnect();
    return seen;
}

// On every change of the hardware the value out is judged again, once, before the unit tells of the new hardware:
// also when the data and its paths stay as they were.
TEST(BindingRoundTrip, HardwareChangeRenewsTheValueOutOnceBeforeTheHardwareSignal)
{
    HardwareManager first;
    HardwareManager second;
    const std::vector<std::string> expected{"value out", "hardware"};
    const struct {
        const char* name;
        const char* text;
    } rows[] = {{"bound by path, which stays", "BinaryOutputs/Group 1/Output 3"}, {"bound by number", "3"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ContactUnitsTest::HardwareNode root("Root", &first);
        auto* contact = root.add(std::make_unique<ZemTree::HardwareOutContactUnit>("Contact"));
        auto* collection = root.add(std::make_unique<ZemTree::HardwareOutContactCollectionUnit>("Collection"));
        auto* redirect = root.add(makeUnit<ZemTree::AnalogOutputRedirectCollectionUnit>());
        contact->setData(std::make_shared<ZemTree::Contact>(3, true));
        collection->setData(
            ContactUnitsTest::collectionOf<ZemTree::ContactCollection>(std::string(row.text) + ";SC;0;0.5"));
        redirect->setData(ContactUnitsTest::collectionOf<ZemTree::AnalogOutputRedirectCollection>("2;1"));
        for (HardwareManager* hardware : {&second, static_cast<HardwareManager*>(nullptr)}) {
            SCOPED_TRACE(hardware == nullptr ? "hardware removed" : "hardware replaced");
            EXPECT_EQ(expected, signalsDuring(*contact, [&] { root.setHardware(hardware); }));
            root.setHardware(&first);
            EXPECT_EQ(expected, signalsDuring(*collection, [&] { root.setHardware(hardware); }));
            root.setHardware(&first);
            EXPECT_EQ(expected, signalsDuring(*redirect, [&] { root.setHardware(hardware); }));
            root.setHardware(&first);
        }
    }
}

using ContactUnitsTest::HardwareNode;
using ContactUnitsTest::loadFromString;
using ContactUnitsTest::makeMode;
using ContactUnitsTest::saveToString;
using ZemTree::NodeFactory;
using ZemTree::SerializationMode;

} // namespace
