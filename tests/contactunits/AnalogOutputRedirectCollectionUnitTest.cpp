#include "contacts/AnalogOutputRedirectCollectionUnit.h"

#include "ContactUnitsTestSupport.h"
#include "core/common/ConvertionHelper.h"
#include "core/device/HardwareManager.h"
#include "core/device/HardwareVirtualChannels.h"
#include "core/tree/NumericProperty.h"
#include "core/tree/ValueErrors.h"

#include <gtest/gtest.h>
#include <limits>
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
