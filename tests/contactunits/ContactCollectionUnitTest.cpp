#include "contacts/ContactCollectionUnit.h"

#include "ContactUnitsTestSupport.h"
#include "contacts/ContactMode.h"
#include "contacts/HardwareOutContactCollectionUnit.h"
#include "core/common/ConvertionHelper.h"
#include "core/device/HardwareManager.h"
#include "core/device/HardwareVirtualChannels.h"
#include "core/tree/EnumLimiter.h"
#include "core/tree/ValueErrors.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

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
