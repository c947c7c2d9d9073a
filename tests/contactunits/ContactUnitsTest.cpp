#include "ContactUnitsTestSupport.h"
#include "contacts/AnalogOutputRedirectCollectionUnit.h"
#include "contacts/ContactCollectionUnit.h"
#include "contacts/ContactMode.h"
#include "contacts/ContactUnit.h"
#include "contacts/HardwareInContactUnit.h"
#include "contacts/HardwareOutContactCollectionUnit.h"
#include "contacts/HardwareOutContactUnit.h"
#include "core/common/ConvertionHelper.h"
#include "core/device/HardwareManager.h"
#include "core/device/HardwareVirtualChannels.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/EnumLimiter.h"
#include "core/tree/NumericProperty.h"
#include "core/tree/StringProperty.h"
#include "core/tree/TreeLocalization.h"
#include "core/tree/ValueErrors.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace ContactUnitCases {

namespace {

using ContactUnitsTest::HardwareNode;
using ContactUnitsTest::loadFromString;
using ContactUnitsTest::makeLayout;
using ContactUnitsTest::makeMode;
using ContactUnitsTest::saveToString;
using ContactUnitsTest::SignalCounter;
using ZemDevice::HardwareManager;
using ZemTree::Contact;
using ZemTree::ContactUnit;
using ZemTree::HardwareInContactUnit;
using ZemTree::HardwareOutContactUnit;
using ZemTree::MissingElementError;
using ZemTree::SerializationMode;

std::string textOf(const std::shared_ptr<Contact>& contact)
{
    return contact ? Zem::convertToString<std::shared_ptr<Contact>, true, true>(contact) : std::string("null");
}

bool isMissing(const ContactUnit& unit)
{
    return unit.getError() == MissingElementError::getInstance();
}

class ContactUnitTest : public ::testing::Test {
protected:
    void TearDown() override { lng::language = 0; }

    HardwareManager hardware; // two input groups of 8, one output group of 8
    HardwareNode root{"Root", &hardware};
};

TEST_F(ContactUnitTest, NumberGetsThePathOfItsChannelAndTheSameObjectFiresNothingAgain)
{
    HardwareInContactUnit* const unit = root.add(std::make_unique<HardwareInContactUnit>("In"));
    SignalCounter valueOut(*unit);
    auto contact = std::make_shared<Contact>(10, false);

    unit->setData(contact);
    EXPECT_EQ(contact, unit->getNativeData());
    EXPECT_EQ("BinaryInputs/Group 2/Input 2", contact->getPath());
    EXPECT_EQ(nullptr, unit->getError());
    EXPECT_EQ(1, valueOut.take());

    unit->setData(contact);
    EXPECT_EQ(0, valueOut.take());
}

TEST_F(ContactUnitTest, NumberBeyondTheChannelsGivesMissingElementError)
{
    HardwareOutContactUnit* const unit = root.add(std::make_unique<HardwareOutContactUnit>("Out"));
    auto contact = std::make_shared<Contact>(9, true); // the outputs end at 8
    unit->setData(contact);

    EXPECT_EQ("", contact->getPath());
    EXPECT_TRUE(isMissing(*unit));
    ASSERT_NE(nullptr, unit->getValueOut().value);
    EXPECT_EQ(1, unit->getValueOut().value->getNumber());
    EXPECT_EQ("", unit->getValueOut().value->getPath());
    EXPECT_EQ(nullptr, unit->getValueChannel());

    // A stored path of another family is missing too.
    unit->setData(std::make_shared<Contact>("BinaryInputs/Group 1/Input 1", true));
    EXPECT_TRUE(isMissing(*unit));
    unit->setData(std::make_shared<Contact>(8, true));
    EXPECT_EQ(nullptr, unit->getError());
    EXPECT_EQ(hardware.getVirtualChannels()->binaryOutputGroups()[0]->getChannel(7), unit->getValueChannel());
}

TEST_F(ContactUnitTest, ResetValueClonesWithoutThePathAndResolvesTheNumberAgain)
{
    auto defaultContact = std::make_shared<Contact>("BinaryInputs/Group 2/Input 8", false);
    defaultContact->setNumber(3);
    HardwareInContactUnit* const unit = root.add(std::make_unique<HardwareInContactUnit>(
        "In", ZemTree::LocalString("In"), ZemTree::LocalString::Empty(), defaultContact));

    unit->resetValue();

    const std::shared_ptr<Contact> data = unit->getNativeData();
    ASSERT_NE(nullptr, data);
    EXPECT_NE(defaultContact, data);
    EXPECT_EQ("!BinaryInputs/Group 1/Input 3", textOf(data));
    EXPECT_EQ("BinaryInputs/Group 2/Input 8", defaultContact->getPath());
}

TEST_F(ContactUnitTest, ChannelTypeChangeStartsOverWithContactOneOfTheNewFamily)
{
    ContactUnit* const unit = root.add(std::make_unique<ContactUnit>("Plain"));
    auto former = std::make_shared<Contact>(5, false);
    unit->setData(former);
    EXPECT_EQ("!BinaryInputs/Group 1/Input 5", textOf(unit->getValue()));
    SignalCounter valueOut(*unit);

    unit->getChannelTypeProperty()->setData("hardwareBinaryOutput");

    EXPECT_NE(former, unit->getNativeData());
    EXPECT_EQ("BinaryOutputs/Group 1/Output 1", textOf(unit->getValue()));
    EXPECT_EQ(nullptr, unit->getError());
    EXPECT_EQ(1, valueOut.take());
    // The former object is no longer followed.
    former->setNumber(2);
    EXPECT_EQ(0, valueOut.take());
}

TEST_F(ContactUnitTest, HardwareArrivingLaterResolvesAndHardwareGoingAwayRenewsTheValueOut)
{
    HardwareNode bare("Bare");
    HardwareInContactUnit* const unit = bare.add(std::make_unique<HardwareInContactUnit>("In"));
    auto contact = std::make_shared<Contact>(2, true);
    unit->setData(contact);
    SignalCounter valueOut(*unit);
    SignalCounter hardwareSignal(unit->getSignalHardwareChanged());

    bare.setHardware(&hardware);
    EXPECT_EQ("BinaryInputs/Group 1/Input 2", contact->getPath());
    EXPECT_EQ(nullptr, unit->getError());
    EXPECT_EQ(1, valueOut.take());
    EXPECT_EQ(1, hardwareSignal.take());

    // A test set without that channel: the stored path stays and is reported missing.
    HardwareManager small(makeLayout(0, 1, 0));
    bare.setHardware(&small);
    EXPECT_EQ("BinaryInputs/Group 1/Input 2", contact->getPath());
    EXPECT_TRUE(isMissing(*unit));
    EXPECT_EQ(1, valueOut.take());

    // Without hardware nothing is checked; with the first test set back the contact is good again.
    bare.setHardware(nullptr);
    EXPECT_EQ(nullptr, unit->getError());
    bare.setHardware(&hardware);
    EXPECT_EQ(nullptr, unit->getError());
    EXPECT_EQ(2, valueOut.take());
    EXPECT_EQ(3, hardwareSignal.take());
}

TEST_F(ContactUnitTest, ReportShowsTheChannelAsTheUserKnowsIt)
{
    lng::language = 0;
    HardwareNode bare("Bare");
    HardwareInContactUnit* const withHardware = root.add(std::make_unique<HardwareInContactUnit>("A"));
    HardwareInContactUnit* const withoutHardware = bare.add(std::make_unique<HardwareInContactUnit>("B"));
    HardwareInContactUnit* const missing = root.add(std::make_unique<HardwareInContactUnit>("C"));
    withHardware->setData(std::make_shared<Contact>(11, false));
    withoutHardware->setData(std::make_shared<Contact>(11, false));
    missing->setData(std::make_shared<Contact>(30, false));

    const struct {
        const char* text;
        const ContactUnit* unit;
        const char* expected;
    } rows[] = {
        {"channel found", withHardware, "Binary inputs / Group 2 / Input 3"},
        {"no hardware", withoutHardware, "!11"},
        {"channel missing: the stand-in contact", missing, "1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        ZemTree::DisplayXmlParameters parameters("/tmp");
        xmlpp::Document document;
        xmlpp::Element* const report = document.create_root_node("Report");
        row.unit->getDisplayXml(parameters, report);
        xmlpp::Element* const own = dynamic_cast<xmlpp::Element*>(report->get_children().front());
        ASSERT_NE(nullptr, own);
        EXPECT_EQ("Contact", std::string(own->get_attribute_value("DataType")));
        ASSERT_NE(nullptr, own->get_child_text());
        EXPECT_EQ(row.expected, std::string(own->get_child_text()->get_content()));
    }
}

TEST_F(ContactUnitTest, ReadingKeepsTheContactWhenTheSavedChannelTypeFollowsIt)
{
    ContactUnit* const unit = root.add(std::make_unique<ContactUnit>("Plain"));
    unit->getChannelTypeProperty()->setData("hardwareBinaryOutput");
    unit->setData(std::make_shared<Contact>(6, true));
    const std::string saved = saveToString(root, makeMode(SerializationMode::User));

    HardwareNode target("Root", &hardware);
    ContactUnit* const loaded = target.add(std::make_unique<ContactUnit>("Plain"));
    loadFromString(target, saved, makeMode(SerializationMode::User));

    EXPECT_EQ("hardwareBinaryOutput", loaded->getChannelTypeProperty()->getData());
    EXPECT_EQ("BinaryOutputs/Group 1/Output 6", textOf(loaded->getValue()));
    EXPECT_EQ(nullptr, loaded->getError());
}

TEST_F(ContactUnitTest, EmptyValueTextReadsAsTheDefaultContact)
{
    HardwareNode bare("Root");
    HardwareInContactUnit* const unit = bare.add(std::make_unique<HardwareInContactUnit>("In"));
    unit->setData(std::make_shared<Contact>(7, false));
    std::vector<std::string> problems;
    loadFromString(bare, R"(<Root><Node Id="Root"><Node Id="In"><Value/></Node></Node></Root>)",
                   makeMode(SerializationMode::User, &problems));
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ("1", textOf(unit->getValue()));
}

} // namespace

} // namespace ContactUnitCases

namespace ContactCollectionUnitCases {

namespace {

using ContactUnitsTest::HardwareNode;
using ContactUnitsTest::loadFromString;
using ContactUnitsTest::makeMode;
using ContactUnitsTest::saveToString;
using ContactUnitsTest::SignalCounter;
using ZemDevice::HardwareManager;
using ZemTree::ContactCollection;
using ZemTree::HardwareOutContactCollectionUnit;
using ZemTree::MissingElementError;
using ZemTree::SerializationMode;

using Collection = std::shared_ptr<ContactCollection>;

const auto collectionOf = ContactUnitsTest::collectionOf<ContactCollection>;
const auto textOf = ContactUnitsTest::textOf<ContactCollection>;

class ContactCollectionUnitTest : public ::testing::Test {
protected:
    HardwareManager hardware; // one output group of 8
    HardwareNode root{"Root", &hardware};
};

TEST_F(ContactCollectionUnitTest, ElementsWithoutPathGetTheirChannelsWithOneSignal)
{
    HardwareOutContactCollectionUnit* const unit = root.add(std::make_unique<HardwareOutContactCollectionUnit>("Out"));
    SignalCounter valueOut(*unit);
    const Collection collection = collectionOf("1;OFF;0;0|!BinaryOutputs/Group 1/Output 5;SC;0.1;0.25|!3;SC;0;1");
    SignalCounter structure(*collection);

    unit->setData(collection);

    EXPECT_EQ("BinaryOutputs/Group 1/Output 1;OFF;0;0|!BinaryOutputs/Group 1/Output 5;SC;0.1;0.25"
              "|!BinaryOutputs/Group 1/Output 3;SC;0;1",
              textOf(unit->getValue()));
    EXPECT_EQ(nullptr, unit->getError());
    EXPECT_EQ(1, structure.take());
    EXPECT_EQ(1, valueOut.take());

    // Nothing left to resolve: the same object again fires nothing.
    unit->setData(collection);
    EXPECT_EQ(0, structure.take());
    EXPECT_EQ(0, valueOut.take());
}

TEST_F(ContactCollectionUnitTest, OneMissingChannelBlanksTheWholeValueOut)
{
    HardwareOutContactCollectionUnit* const unit = root.add(std::make_unique<HardwareOutContactCollectionUnit>("Out"));
    const Collection collection = collectionOf("1;OFF;0;0|9;SC;0;0");
    unit->setData(collection);

    EXPECT_EQ(MissingElementError::getInstance(), unit->getError());
    ASSERT_NE(nullptr, unit->getValue());
    EXPECT_TRUE(unit->getValue()->empty());
    EXPECT_EQ(2u, unit->getNativeData()->size());
    EXPECT_EQ(nullptr, unit->getValueChannel(unit->getNativeData()->at(1)));
    EXPECT_EQ(hardware.getVirtualChannels()->binaryOutputGroups()[0]->getChannel(0),
              unit->getValueChannel(unit->getNativeData()->at(0)));

    // Fixing the element in place brings the value back.
    collection->at(1)->setPath("BinaryOutputs/Group 1/Output 8");
    EXPECT_EQ(nullptr, unit->getError());
    EXPECT_EQ(2u, unit->getValue()->size());
}

TEST_F(ContactCollectionUnitTest, WithoutHardwareElementsStandAsGiven)
{
    HardwareNode bare("Bare");
    HardwareOutContactCollectionUnit* const unit = bare.add(std::make_unique<HardwareOutContactCollectionUnit>("Out"));
    unit->setData(collectionOf("12;OFF;0;0|!Nowhere;SC;0;0"));
    EXPECT_EQ("12;OFF;0;0|!Nowhere;SC;0;0", textOf(unit->getValue()));
    EXPECT_EQ(nullptr, unit->getError());

    SignalCounter valueOut(*unit);
    bare.setHardware(&hardware);
    // 12 is behind the outputs, so no path is found for it.
    EXPECT_EQ("12;OFF;0;0|!Nowhere;SC;0;0", textOf(unit->getNativeData()));
    EXPECT_EQ(MissingElementError::getInstance(), unit->getError());
    EXPECT_EQ(1, valueOut.take());
}

TEST_F(ContactCollectionUnitTest, ActualLimiterFallsBackToAllModesWhileItsOwnIsEmpty)
{
    HardwareOutContactCollectionUnit unit;
    ZemTree::EnumLimiter* const fallback = unit.getActualLimiter();
    EXPECT_EQ(ZemTree::ContactMode::getDefaultHardwareOutLimiter().get(), fallback);
    EXPECT_EQ(6u, fallback->count());

    unit.getLimiter()->addItem(ZemTree::ContactMode::SC, ZemTree::LocalString("SC"));
    EXPECT_EQ(unit.getLimiter(), unit.getActualLimiter());

    auto shared = std::make_shared<ZemTree::EnumLimiter>();
    shared->addItem(ZemTree::ContactMode::OFF, ZemTree::LocalString("Off"));
    HardwareOutContactCollectionUnit external("External", ZemTree::LocalString("External"),
                                              ZemTree::LocalString::Empty(), nullptr, shared);
    EXPECT_EQ(shared.get(), external.getActualLimiter());
}

TEST_F(ContactCollectionUnitTest, WorkingValueIsAResolvedCloneOfTheDefault)
{
    HardwareOutContactCollectionUnit* const unit = root.add(std::make_unique<HardwareOutContactCollectionUnit>("Out"));
    const Collection defaults = collectionOf("2;SC;0;0.5");
    unit->setDefaultData(defaults);
    EXPECT_NE(defaults, unit->getNativeData());
    EXPECT_EQ("BinaryOutputs/Group 1/Output 2;SC;0;0.5", textOf(unit->getNativeData()));
    unit->setData(collectionOf("5;OFF;0;0"));

    unit->resetValue();

    EXPECT_NE(defaults, unit->getNativeData());
    EXPECT_EQ("BinaryOutputs/Group 1/Output 2;SC;0;0.5", textOf(unit->getNativeData()));
    EXPECT_EQ("2;SC;0;0.5", textOf(defaults));
}

TEST_F(ContactCollectionUnitTest, UserRoundTripGivesTheSameXmlWithAndWithoutHardware)
{
    for (const bool withHardware : {true, false}) {
        SCOPED_TRACE(withHardware ? "with hardware" : "without hardware");
        HardwareManager* const used = withHardware ? &hardware : nullptr;
        HardwareNode source("Root", used);
        HardwareOutContactCollectionUnit* const unit =
            source.add(std::make_unique<HardwareOutContactCollectionUnit>("Out"));
        unit->setData(collectionOf("1;OFF;0;0|!2;SC;0.1;0.25|!BinaryOutputs/Group 1/Output 7;RPO;1;nan"));
        const std::string saved = saveToString(source, makeMode(SerializationMode::User));

        // Built by the tree, as a template would, and read from the file.
        HardwareNode built("Root", used);
        built.add(std::make_unique<HardwareOutContactCollectionUnit>("Out"));
        // Made from the file's class name.
        HardwareNode made("Root", used);
        for (HardwareNode* target : {&built, &made}) {
            std::vector<std::string> problems;
            loadFromString(*target, saved, makeMode(SerializationMode::User, &problems));
            EXPECT_TRUE(problems.empty());
            ASSERT_EQ(1u, target->size());
            auto* const loaded = dynamic_cast<HardwareOutContactCollectionUnit*>(target->at(0));
            ASSERT_NE(nullptr, loaded);
            EXPECT_EQ(textOf(unit->getValue()), textOf(loaded->getValue()));
            EXPECT_EQ(saved, saveToString(*target, makeMode(SerializationMode::User)));
        }
    }
}

TEST_F(ContactCollectionUnitTest, MalformedTextIsReportedAndReadingGoesOn)
{
    HardwareOutContactCollectionUnit* const unit = root.add(std::make_unique<HardwareOutContactCollectionUnit>("Out"));
    const Collection before = collectionOf("3;OFF;0;0");
    unit->setData(before);
    const struct {
        const char* text;
        const char* value;
    } rows[] = {
        {"too few fields", "1;OFF;0"},
        {"a time that is no number", "1;OFF;zero;0"},
        {"a trailing separator", "1;OFF;0;0|"},
        {"an empty contact name", "!;SC;0;0"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        std::vector<std::string> problems;
        loadFromString(root,
                       std::string(R"(<Root><Node Id="Root"><Node Id="Out" IsActive="false"><Value>)") + row.value
                           + "</Value></Node></Node></Root>",
                       makeMode(SerializationMode::User, &problems));
        EXPECT_EQ(1u, problems.size());
        EXPECT_EQ(before, unit->getNativeData());
        EXPECT_FALSE(unit->isActive()) << "the attributes around the value are still read";
        unit->setIsActive(true);
    }
}

} // namespace

} // namespace ContactCollectionUnitCases

namespace AnalogOutputRedirectCollectionUnitCases {

namespace {

using ContactUnitsTest::HardwareNode;
using ContactUnitsTest::loadFromString;
using ContactUnitsTest::makeLayout;
using ContactUnitsTest::makeMode;
using ContactUnitsTest::saveToString;
using ContactUnitsTest::SignalCounter;
using ZemDevice::HardwareManager;
using ZemTree::AnalogOutputRedirectCollection;
using ZemTree::AnalogOutputRedirectCollectionUnit;
using ZemTree::MissingElementError;
using ZemTree::SerializationMode;

using Collection = std::shared_ptr<AnalogOutputRedirectCollection>;

const auto collectionOf = ContactUnitsTest::collectionOf<AnalogOutputRedirectCollection>;
const auto textOf = ContactUnitsTest::textOf<AnalogOutputRedirectCollection>;

std::vector<int> numbersOf(const Collection& collection)
{
    std::vector<int> numbers;
    for (const ZemTree::AnalogOutputTarget* target : *collection)
        numbers.push_back(target->getNumber());
    return numbers;
}

AnalogOutputRedirectCollectionUnit* addUnit(HardwareNode& root, double groupCount)
{
    return root.add(std::make_unique<AnalogOutputRedirectCollectionUnit>(
        "Redirect", ZemTree::LocalString("Redirect"), ZemTree::LocalString::Empty(), nullptr, groupCount));
}

class AnalogOutputRedirectCollectionUnitTest : public ::testing::Test {
protected:
    HardwareManager hardware; // three analog groups
    HardwareNode root{"Root", &hardware};
};

TEST_F(AnalogOutputRedirectCollectionUnitTest, RaisedCountAddsTargetsThatTakeTheFreeGroupsInTurn)
{
    AnalogOutputRedirectCollectionUnit* const unit = addUnit(root, 2.0);
    unit->setData(collectionOf("AnalogOutputs/Group 3;AnalogOutputs/Group 2"));
    EXPECT_EQ(nullptr, unit->getError());
    SignalCounter valueOut(*unit);

    unit->getGroupCountProperty()->setData(4.0);

    // The new targets are numbered from 1 and take the groups from the first on that no other target names; the
    // last finds none left on a test set of three groups.
    EXPECT_EQ((std::vector<int>{1, 1, 1, 2}), numbersOf(unit->getNativeData()));
    EXPECT_EQ("AnalogOutputs/Group 3;AnalogOutputs/Group 2;AnalogOutputs/Group 1;2", textOf(unit->getNativeData()));
    EXPECT_EQ(ZemTree::MissingElementError::getInstance(), unit->getError());
    EXPECT_LE(1, valueOut.take());
}

TEST_F(AnalogOutputRedirectCollectionUnitTest, LoweredCountCutsFromTheEnd)
{
    AnalogOutputRedirectCollectionUnit* const unit = addUnit(root, 3.0);
    EXPECT_EQ("AnalogOutputs/Group 1;AnalogOutputs/Group 2;AnalogOutputs/Group 3", textOf(unit->getValue()));
    const Collection data = unit->getNativeData();

    unit->getGroupCountProperty()->setData(1.0);
    EXPECT_EQ(data, unit->getNativeData());
    EXPECT_EQ("AnalogOutputs/Group 1", textOf(unit->getValue()));
    unit->getGroupCountProperty()->setData(0.0);
    EXPECT_EQ("", textOf(unit->getValue()));
    EXPECT_EQ(nullptr, unit->getError());
}

TEST_F(AnalogOutputRedirectCollectionUnitTest, CountIsCutOrRefused)
{
    AnalogOutputRedirectCollectionUnit* const unit = addUnit(root, 1.0);
    const struct {
        const char* text;
        double count;
        std::size_t size;
        bool isMissing;
    } rows[] = {
        {"a fraction is cut in the resize and in the check", 2.7, 2, false},
        {"just below the next whole number", 0.999, 0, false},
        {"negative: the list stays", -1.0, 0, true},
        {"not a number: the list stays", std::numeric_limits<double>::quiet_NaN(), 0, true},
        {"back to a whole count", 3.0, 3, false},
        {"infinite: the list stays", std::numeric_limits<double>::infinity(), 3, true},
        {"too large to follow: the list stays", 1e12, 3, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        unit->getGroupCountProperty()->setData(row.count);
        EXPECT_EQ(row.size, unit->getNativeData()->size());
        if (row.isMissing) {
            EXPECT_EQ(MissingElementError::getInstance(), unit->getError());
            // The stand-in is a fresh list the count cannot shape.
            ASSERT_NE(nullptr, unit->getValue());
            EXPECT_NE(unit->getNativeData(), unit->getValue());
            EXPECT_TRUE(unit->getValue()->empty());
        }
        else {
            EXPECT_EQ(nullptr, unit->getError());
            EXPECT_EQ(unit->getNativeData(), unit->getValue());
        }
    }
}

TEST_F(AnalogOutputRedirectCollectionUnitTest, WithoutHardwareTheCountHoldsAndPathsStayEmpty)
{
    HardwareNode bare("Bare");
    AnalogOutputRedirectCollectionUnit* const unit = addUnit(bare, 2.0);
    const Collection data = unit->getNativeData();
    EXPECT_EQ("1;2", textOf(data));
    EXPECT_EQ(nullptr, unit->getError());

    // Each pass over targets without a path counts as a change.
    SignalCounter structure(*data);
    unit->setData(data);
    EXPECT_EQ(1, structure.take());

    SignalCounter hardwareSignal(unit->getSignalHardwareChanged());
    bare.setHardware(&hardware);
    EXPECT_EQ("AnalogOutputs/Group 1;AnalogOutputs/Group 2", textOf(unit->getValue()));
    EXPECT_EQ(1, hardwareSignal.take());
}

TEST_F(AnalogOutputRedirectCollectionUnitTest, GroupMissingOnTheHardwareIsReported)
{
    AnalogOutputRedirectCollectionUnit* const unit = addUnit(root, 2.0);
    unit->setData(collectionOf("AnalogOutputs/Group 3;AnalogOutputs/Group 9"));
    EXPECT_EQ(MissingElementError::getInstance(), unit->getError());
    EXPECT_EQ("AnalogOutputs/Group 1;AnalogOutputs/Group 2", textOf(unit->getValue()))
        << "the stand-in has the right length, with the default groups";
    EXPECT_EQ(nullptr, unit->getValueGroup(unit->getNativeData()->at(1)));
    EXPECT_EQ(hardware.getVirtualChannels()->analogOutputGroups()[2],
              unit->getValueGroup(unit->getNativeData()->at(0)));

    HardwareManager larger(makeLayout(0, 0, 9));
    root.setHardware(&larger);
    EXPECT_EQ(nullptr, unit->getError());
    root.setHardware(nullptr);
    EXPECT_EQ(nullptr, unit->getError());
    EXPECT_EQ(nullptr, unit->getValueGroup(unit->getNativeData()->at(0)));
}

TEST_F(AnalogOutputRedirectCollectionUnitTest, LoadedListOfAnotherLengthIsReportedUntilTheNextSetData)
{
    AnalogOutputRedirectCollectionUnit* const unit = addUnit(root, 2.0);
    std::vector<std::string> problems;
    loadFromString(root,
                   R"(<Root><Node Id="Root"><Node Id="Redirect"><Value>AnalogOutputs/Group 2</Value>)"
                   R"(</Node></Node></Root>)",
                   makeMode(SerializationMode::User, &problems));
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ("AnalogOutputs/Group 2", textOf(unit->getNativeData()));
    EXPECT_EQ(MissingElementError::getInstance(), unit->getError());

    unit->setData(unit->getNativeData());
    EXPECT_EQ("AnalogOutputs/Group 2;AnalogOutputs/Group 1", textOf(unit->getValue()));
    EXPECT_EQ(nullptr, unit->getError());
}

TEST_F(AnalogOutputRedirectCollectionUnitTest, UserRoundTripKeepsListAndCount)
{
    AnalogOutputRedirectCollectionUnit* const unit = addUnit(root, 3.0);
    unit->setData(collectionOf("AnalogOutputs/Group 3;AnalogOutputs/Group 1;AnalogOutputs/Group 2"));
    const std::string saved = saveToString(root, makeMode(SerializationMode::User));

    HardwareNode target("Root", &hardware);
    AnalogOutputRedirectCollectionUnit* const loaded = addUnit(target, 1.0);
    std::vector<std::string> problems;
    loadFromString(target, saved, makeMode(SerializationMode::User, &problems));
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ(3.0, loaded->getGroupCountProperty()->getData());
    EXPECT_EQ(textOf(unit->getValue()), textOf(loaded->getValue()));
    EXPECT_EQ(nullptr, loaded->getError());
    EXPECT_EQ(saved, saveToString(target, makeMode(SerializationMode::User)));

    // A target that begins with a digit but is no number, and an empty one, both read as target 1.
    loadFromString(target, R"(<Root><Node Id="Root"><Node Id="Redirect"><Value>12a;</Value></Node></Node></Root>)",
                   makeMode(SerializationMode::User, &problems));
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ("1;1", textOf(loaded->getNativeData()));
    EXPECT_EQ(MissingElementError::getInstance(), loaded->getError());
}

} // namespace

} // namespace AnalogOutputRedirectCollectionUnitCases
