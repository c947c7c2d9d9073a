#include "contacts/ContactUnit.h"

#include "ContactUnitsTestSupport.h"
#include "contacts/HardwareInContactUnit.h"
#include "contacts/HardwareOutContactUnit.h"
#include "core/common/ConvertionHelper.h"
#include "core/device/HardwareManager.h"
#include "core/device/HardwareVirtualChannels.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/StringProperty.h"
#include "core/tree/TreeLocalization.h"
#include "core/tree/ValueErrors.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

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

TEST_F(ContactUnitTest, SavedContactReadsBackIntoAFreshTree)
{
    for (const bool withHardware : {true, false}) {
        SCOPED_TRACE(withHardware ? "with hardware" : "without hardware");
        HardwareNode source("Root", withHardware ? &hardware : nullptr);
        HardwareOutContactUnit* const unit = source.add(std::make_unique<HardwareOutContactUnit>("Out"));
        unit->setData(std::make_shared<Contact>(4, false));
        const std::string saved = saveToString(source, makeMode(SerializationMode::User));

        HardwareNode target("Root", withHardware ? &hardware : nullptr);
        std::vector<std::string> problems;
        loadFromString(target, saved, makeMode(SerializationMode::User, &problems));
        EXPECT_TRUE(problems.empty());
        ASSERT_EQ(1u, target.size());
        auto* const loaded = dynamic_cast<HardwareOutContactUnit*>(target.at(0));
        ASSERT_NE(nullptr, loaded);
        EXPECT_EQ(withHardware ? "!BinaryOutputs/Group 1/Output 4" : "!4", textOf(loaded->getValue()));
        EXPECT_EQ(saved, saveToString(target, makeMode(SerializationMode::User)));
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
