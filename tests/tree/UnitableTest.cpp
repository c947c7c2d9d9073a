#include "core/tree/Unitable.h"

#include "TreeTestNodes.h"
#include "core/tree/ActionUnit.h"
#include "core/tree/IActionEngineAPI.h"
#include "core/tree/StringUnit.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

using namespace ZemTree;

namespace {

// Records the hidden hook together with what the unit looked like when the hook ran.
class HiddenProbe : public Unitable {
public:
    using Unitable::Unitable;
    std::vector<bool> hookSaw;

protected:
    void _onIsHiddenChanged() override { hookSaw.push_back(isHidden()); }
};

class CountingAction : public ActionUnit {
public:
    using ActionUnit::ActionUnit;
    int runCount = 0;

protected:
    void _runAction(IActionEngineAPI&) override { ++runCount; }
};

class NotActiveSerializable : public Unitable {
public:
    using Unitable::Unitable;

protected:
    bool _isActiveSerializable() const override { return false; }
};

class FakeEngine : public IActionEngineAPI {};

} // namespace

TEST(UnitableTest, HiddenChangeRunsTheHookBeforeTheSignal)
{
    HiddenProbe unit("Unit");
    std::vector<std::size_t> hookCountAtSignal;
    unit.getSignalIsHiddenChanged().connect([&](Unitable* source) {
        EXPECT_EQ(source, &unit);
        hookCountAtSignal.push_back(unit.hookSaw.size());
    });

    unit.setIsHidden(false);
    EXPECT_TRUE(unit.hookSaw.empty()) << "an equal value changes nothing";
    unit.setIsHidden(true);
    unit.setIsHidden(true);
    unit.setIsHidden(false);
    EXPECT_EQ(unit.hookSaw, (std::vector<bool>{true, false}));
    EXPECT_EQ(hookCountAtSignal, (std::vector<std::size_t>{1, 2}));

    int activeSignals = 0;
    unit.getSignalIsActiveChanged().connect([&](Unitable*) { ++activeSignals; });
    unit.setIsActive(true);
    unit.setIsActive(false);
    unit.setIsActive(false);
    EXPECT_EQ(activeSignals, 1);
}

TEST(UnitableTest, EditableStateInheritsThroughEmptyValues)
{
    struct Row {
        const char* text;
        Zem::NullableBool root;
        Zem::NullableBool child;
        bool expected;
    };
    const Row rows[] = {
        {"nothing set anywhere", {}, {}, true},
        {"child inherits false over a plain node", {false}, {}, false},
        {"child's own true wins", {false}, {true}, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        Unitable root("Root");
        Node* plain = root.add(std::make_unique<Node>("Plain"));
        auto* child = plain->add(std::make_unique<Unitable>("Child"));
        root.getIsEditable().set(row.root);
        child->getIsEditable().set(row.child);
        EXPECT_EQ(child->getIsEditable().isEditable(), row.expected);
        EXPECT_EQ(child->getIsEditable().get(), row.child);
    }

    Unitable unit("Unit");
    std::vector<Zem::NullableBool> seen;
    unit.getIsEditable().getSignalChanged().connect([&](const Zem::NullableBool& value) { seen.push_back(value); });
    for (const Zem::NullableBool value : {Zem::NullableBool(true), Zem::NullableBool(true), Zem::NullableBool()})
        unit.getIsEditable().set(value);
    EXPECT_EQ(seen, (std::vector<Zem::NullableBool>{Zem::NullableBool(true), Zem::NullableBool()}));
}

TEST(UnitableTest, ActiveStateIsSavedOnlyWhenTheClassWantsIt)
{
    const SerializationMode mode;
    Unitable plain("Plain");
    plain.setIsActive(false);
    NotActiveSerializable fixed("Fixed");
    fixed.setIsActive(false);

    const std::string plainText = TreeTest::saveToString(plain, mode);
    const std::string fixedText = TreeTest::saveToString(fixed, mode);
    EXPECT_NE(plainText.find("IsActive=\"false\""), std::string::npos);
    EXPECT_EQ(fixedText.find("IsActive"), std::string::npos);

    NotActiveSerializable reader("Fixed");
    TreeTest::loadFromString(reader, plainText, mode);
    EXPECT_TRUE(reader.isActive()) << "an attribute in the file does not reach a class that does not save it";
}

TEST(UnitableTest, ActionUnitEvaluatesWithOrWithoutEngine)
{
    CountingAction action("Action");
    std::vector<std::pair<ActionUnit*, IActionEngineAPI*>> evaluated;
    action.getSignalEvaluated().connect(
        [&](ActionUnit* unit, IActionEngineAPI* api) { evaluated.emplace_back(unit, api); });
    FakeEngine engine;

    struct Row {
        const char* text;
        bool active;
        std::string actionText;
        IActionEngineAPI* api;
        int runs;
    };
    const Row rows[] = {
        {"null engine", true, "go", nullptr, 0},
        {"engine and action", true, "go", &engine, 1},
        {"inactive", false, "go", &engine, 0},
        {"empty action", true, "", &engine, 0},
    };
    std::uint64_t count = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        action.runCount = 0;
        evaluated.clear();
        action.setIsActive(row.active);
        action.setAction(row.actionText);
        action.evaluate(row.api);
        ++count;
        EXPECT_EQ(action.runCount, row.runs);
        EXPECT_EQ(action.getEvaluationCount(), count);
        ASSERT_EQ(evaluated.size(), 1u) << "every evaluation is signalled";
        EXPECT_EQ(evaluated[0].first, &action);
        EXPECT_EQ(evaluated[0].second, row.api);
    }
}

TEST(UnitableTest, StringUnitSignalsRealChangesOnly)
{
    StringUnit unit("Serial", LocalString("Serial"), LocalString(), "A");
    std::vector<std::string> seen;
    unit.getSignalValueChanged().connect([&](StringUnit* source) { seen.push_back(source->getValue()); });
    for (const char* value : {"A", "B", "B", "", "A"})
        unit.setValue(value);
    EXPECT_EQ(seen, (std::vector<std::string>{"B", "", "A"}));
}
