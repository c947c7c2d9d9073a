#include "core/tree/Node.h"

#include "TemporaryFolder.h"
#include "TreeTestNodes.h"
#include "contactunits/ContactUnitsTestSupport.h"
#include "containers/UnitableStructureContainer.h"
#include "core/common/TypeHelper.h"
#include "core/device/HardwareManager.h"
#include "core/tree/BooleanProperty.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/EnumLimiter.h"
#include "core/tree/HardwareContainerRootWatcher.h"
#include "core/tree/MeasureProperty.h"
#include "core/tree/Measures.h"
#include "core/tree/NodeFactory.h"
#include "core/tree/NodePathHelper.h"
#include "core/tree/NodeTreeTraversal.h"
#include "core/tree/NumericProperty.h"
#include "core/tree/StringProperty.h"
#include "core/tree/StringUnit.h"
#include "core/tree/TreeLocalization.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <unistd.h>
#include <vector>

using namespace ZemTree;
using TreeTest::TestForbidden;
using TreeTest::TestGroup;
using TreeTest::TestItem;

namespace {

struct PositionRecord {
    Node* source;
    Node* item;
    Zem::NotifyCollectionChangedAction action;
    std::uint64_t index;
};

void recordPositions(Node* node, std::vector<PositionRecord>& records)
{
    node->getSignalHierarchicalPositionChanged().connect([&records](Node* source, Node::Args& args) {
        records.push_back({source, args.item, args.action, args.index});
    });
}

} // namespace

TEST(NodeTest, ParentLinksFollowAddingAndRemoving)
{
    Node root("Root");
    Node* a = root.add(std::make_unique<Node>("A"));
    Node* b = a->add(std::make_unique<Node>("B"));
    TestItem* item = b->add(std::make_unique<TestItem>("Item"));

    Node* inserted = root.insert(0, std::make_unique<Node>("Inserted"));
    EXPECT_EQ(inserted->getIndex(), 0);
    EXPECT_EQ(a->getIndex(), 1);
    EXPECT_EQ(item->getParent(), b);
    EXPECT_EQ(item->getRoot(), &root);
    EXPECT_EQ(item->parentChangedCount, 1);

    std::unique_ptr<Node> released = b->release(item);
    ASSERT_EQ(released.get(), item);
    EXPECT_EQ(item->getParent(), nullptr);
    EXPECT_EQ(item->getRoot(), item);
    EXPECT_EQ(item->getIndex(), -1);
    EXPECT_EQ(item->parentChangedCount, 2);
}

TEST(NodeTest, HierarchicalIdAndDescription)
{
    Node root("Root", LocalString("Protection"));
    Node* group = root.add(std::make_unique<Node>("Group", LocalString()));
    Node* leaf = group->add(std::make_unique<Node>("Leaf", LocalString::create("Voltage", "Напряжение")));
    Node* unnamed = root.add(std::make_unique<Node>("", LocalString("Only text")));

    struct Row {
        const char* text;
        const Node* node;
        int language;
        std::string id;
        std::string description;
    };
    const Row rows[] = {
        {"empty description is skipped", group, 0, "Root/Group", "Protection"},
        {"russian leaf", leaf, 1, "Root/Group/Leaf", "Protection / Напряжение"},
        {"empty id keeps its place", unnamed, 0, "Root/", "Protection / Only text"},
    };
    const int languageBefore = lng::language;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        lng::language = row.language;
        EXPECT_EQ(row.node->getHierarchicalId(), row.id);
        EXPECT_EQ(row.node->getHierarchicalDescription(), row.description);
    }
    lng::language = languageBefore;
}

TEST(NodeTest, RefusedChildrenLeaveTreeAndSignalsUntouched)
{
    TestGroup group;
    Node* child = group.add(std::make_unique<Node>("Existing"));
    Node other("Other");
    int collectionSignals = 0;
    group.getSignalCollectionChanged().connect([&](Node::Args&) { ++collectionSignals; });
    std::vector<PositionRecord> positions;
    recordPositions(&group, positions);

    EXPECT_THROW(group.add(std::make_unique<TestForbidden>()), std::logic_error);
    // The raw form of the collection is the only way to offer a node that is already in a tree.
    EXPECT_THROW(child->Zem::NotifyCollection<Node*>::add(child), std::logic_error);
    EXPECT_THROW(child->Zem::NotifyCollection<Node*>::add(&group), std::logic_error) << "its ancestor";
    EXPECT_THROW(other.Zem::NotifyCollection<Node*>::add(child), std::logic_error) << "a node with a parent";
    EXPECT_EQ(group.size(), 1u);
    EXPECT_EQ(other.size(), 0u);
    EXPECT_EQ(child->getParent(), &group);
    EXPECT_EQ(collectionSignals, 0);
    EXPECT_TRUE(positions.empty());
}

TEST(NodeTest, LockedContainerRefusesTheUserButTakesProperties)
{
    TestGroup group;
    TestItem* existing = group.add(std::make_unique<TestItem>("Existing"));
    group.lockContainer();

    try {
        group.add(std::make_unique<Node>("New"));
        FAIL() << "a locked container must refuse";
    }
    catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), lng::Tree::get("error.ReadOnly"));
    }
    EXPECT_THROW(group.remove(existing), std::logic_error);
    EXPECT_EQ(group.size(), 1u);

    int collectionSignals = 0;
    group.getSignalCollectionChanged().connect([&](Node::Args&) { ++collectionSignals; });
    auto* property = static_cast<TestItem*>(group.addPropertyInner(std::make_unique<TestItem>("Property")));
    EXPECT_EQ(group.size(), 2u);
    EXPECT_EQ(collectionSignals, 1);
    EXPECT_TRUE(group.isLocked()) << "the lock is restored after the property is in";
    EXPECT_TRUE(property->isReadOnlyDescriptors());

    // A refused property leaves the lock in place too.
    EXPECT_THROW(group.addPropertyInner(std::make_unique<TestForbidden>()), std::logic_error);
    EXPECT_TRUE(group.isLocked());
    EXPECT_EQ(group.size(), 2u);
}

TEST(NodeTest, ChildrenAreToldAboutTheParentLock)
{
    TestGroup group;
    TestItem* item = group.add(std::make_unique<TestItem>("Item"));
    group.lockContainer();
    EXPECT_TRUE(item->isReadOnlyDescriptors());
    group.unlockContainer();
    EXPECT_FALSE(item->isParentCollectionLocked());
    EXPECT_EQ(item->parentLockedCalls, (std::vector<bool>{false, true, false}));
}

TEST(NodeTest, SystemLockReachesTheSubtreeAndChildLockPassesOn)
{
    TestGroup root("Root");
    TestGroup* inner = root.add(std::make_unique<TestGroup>("Inner"));
    TestItem* item = inner->add(std::make_unique<TestItem>("Item"));

    root.lockContainer();
    EXPECT_TRUE(root.isLocked());
    EXPECT_FALSE(inner->isLocked()) << "the system lock tells the subtree but locks only this container";
    EXPECT_EQ(root.systemLockedCount, 1);
    EXPECT_EQ(inner->systemLockedCount, 1);
    EXPECT_EQ(item->systemLockedCount, 1);

    root.lockChildContainer(inner);
    EXPECT_TRUE(inner->isLocked());
    EXPECT_EQ(inner->systemLockedCount, 2);
    EXPECT_EQ(item->systemLockedCount, 2);
    EXPECT_THROW(inner->add(std::make_unique<Node>("New")), std::logic_error);
    EXPECT_NO_THROW(root.lockChildContainer(nullptr));
}

TEST(NodeTest, HierarchicalPositionSignalReachesTheMovedSubtree)
{
    Node root("Root");
    Node* sibling = root.add(std::make_unique<Node>("Sibling"));
    auto moved = std::make_unique<Node>("Moved");
    Node* child = moved->add(std::make_unique<Node>("Child"));
    Node* grandChild = child->add(std::make_unique<Node>("GrandChild"));
    Node* movedRaw = moved.get();

    std::vector<PositionRecord> records;
    for (Node* node : {&root, sibling, movedRaw, child, grandChild})
        recordPositions(node, records);

    root.add(std::move(moved));
    ASSERT_EQ(records.size(), 3u) << "the moved node and its descendants only";
    const Node* expectedSources[] = {movedRaw, child, grandChild};
    for (std::size_t i = 0; i < records.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(records[i].source, expectedSources[i]);
        EXPECT_EQ(records[i].item, movedRaw);
        EXPECT_EQ(records[i].action, Zem::NotifyCollectionChangedAction::Added);
        EXPECT_EQ(records[i].index, 1u);
    }
    EXPECT_EQ(grandChild->getHierarchicalId(), "Root/Moved/Child/GrandChild")
        << "the tree is consistent before the signal";

    records.clear();
    std::unique_ptr<Node> back = root.release(movedRaw);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[2].action, Zem::NotifyCollectionChangedAction::Removed);
}

TEST(NodeFactoryTest, RegisteredTypesBuildTheirOwnClass)
{
    struct Row {
        const std::type_info& type;
        bool (*isRightType)(const Node*);
    };
    const Row rows[] = {
        {typeid(StringUnit), [](const Node* n) { return dynamic_cast<const StringUnit*>(n) != nullptr; }},
        {typeid(TreeTest::TestGroup),
         [](const Node* n) { return dynamic_cast<const TreeTest::TestGroup*>(n) != nullptr; }},
        {typeid(EnumLimiter), [](const Node* n) { return dynamic_cast<const EnumLimiter*>(n) != nullptr; }},
        {typeid(NumericProperty), [](const Node* n) { return dynamic_cast<const NumericProperty*>(n) != nullptr; }},
        {typeid(MeasureProperty), [](const Node* n) { return dynamic_cast<const MeasureProperty*>(n) != nullptr; }},
    };
    for (const Row& row : rows) {
        const std::string key = Zem::TypeHelper::getTypeName(row.type);
        SCOPED_TRACE(key);
        EXPECT_TRUE(NodeFactory::isRegistered(key));
        const std::unique_ptr<Node> made = NodeFactory::create(key);
        ASSERT_NE(made, nullptr);
        EXPECT_TRUE(row.isRightType(made.get()));
        EXPECT_EQ(Zem::TypeHelper::getTypeName(typeid(*made)), key) << "the key names the dynamic type";
    }
    EXPECT_EQ(NodeFactory::create("ZemTree::Unknown"), nullptr);
}

namespace {

using ZemTree::Node;
using ZemTree::NodePathHelper;

Node* addChild(Node* parent, const std::string& id)
{
    return parent->add(std::make_unique<Node>(id));
}

// Root
// ├── Settings
// │   ├── Iset
// │   └── Tset
// ├── Parameters
// │   └── Group
// │       └── Value
// ├── a/b          (an id with a slash)
// │   └── ..       (an id that looks like a step)
// ├── 100%
// └── ""           (an empty id)
struct Tree {
    Tree() : root(std::make_unique<Node>("Root"))
    {
        settings = addChild(root.get(), "Settings");
        iset = addChild(settings, "Iset");
        tset = addChild(settings, "Tset");
        parameters = addChild(root.get(), "Parameters");
        group = addChild(parameters, "Group");
        value = addChild(group, "Value");
        slash = addChild(root.get(), "a/b");
        dots = addChild(slash, "..");
        percent = addChild(root.get(), "100%");
        unnamed = addChild(root.get(), "");
    }

    std::unique_ptr<Node> root;
    Node* settings;
    Node* iset;
    Node* tset;
    Node* parameters;
    Node* group;
    Node* value;
    Node* slash;
    Node* dots;
    Node* percent;
    Node* unnamed;
};

TEST(NodePathHelperTest, PathsAndTargets)
{
    const Tree tree;
    struct Row {
        const char* text;
        const Node* from;
        const Node* to;
        std::string path;
    };
    const Row rows[] = {
        {"self", tree.iset, tree.iset, "."},
        {"sibling", tree.iset, tree.tset, "../Tset"},
        {"cousin deeper", tree.value, tree.tset, "../../../Settings/Tset"},
        {"ancestor", tree.value, tree.root.get(), "../../.."},
        {"descendant", tree.root.get(), tree.value, "Parameters/Group/Value"},
        {"id with slash and dot-like id", tree.iset, tree.dots, "../../a%2Fb/%2E."},
        {"id with percent", tree.root.get(), tree.percent, "100%25"},
        {"empty id", tree.value, tree.unnamed, "../../../%"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.path, NodePathHelper::getPath(row.from, row.to));
        EXPECT_EQ(row.to, NodePathHelper::getTarget(const_cast<Node*>(row.from), row.path));
    }
}

TEST(NodePathHelperTest, NoPathBetweenTreesOrFromNull)
{
    const Tree first;
    const Tree second;
    EXPECT_EQ("", NodePathHelper::getPath(first.iset, second.iset));
    EXPECT_EQ("", NodePathHelper::getPath(nullptr, first.iset));
    EXPECT_EQ("", NodePathHelper::getPath(first.iset, nullptr));
    EXPECT_EQ(nullptr, NodePathHelper::getTarget(nullptr, "Iset"));
}

TEST(NodePathHelperTest, MalformedOrMissingPathsGiveNull)
{
    const Tree tree;
    // ".." from the root and the long climb both go above the root.
    const char* const paths[] = {"",     "/",   "Settings/", "Settings//Iset",           "..", "Nobody", "%2", "%zz",
                                 "100%", "a/b", "%%",        "Settings/Iset/../../../.."};
    for (const char* path : paths) {
        SCOPED_TRACE(path);
        EXPECT_EQ(nullptr, NodePathHelper::getTarget(tree.root.get(), path));
    }
}

TEST(NodePathHelperTest, LenientStepsResolve)
{
    const Tree tree;
    Node* const twin = addChild(tree.settings, "Iset");
    EXPECT_EQ("", NodePathHelper::getPath(tree.root.get(), twin)) << "an ambiguous sibling has no path";
    EXPECT_EQ(tree.iset, NodePathHelper::getTarget(tree.root.get(), "./Settings/./Iset"));
    EXPECT_EQ(tree.tset, NodePathHelper::getTarget(tree.root.get(), "Settings/Iset/../Tset"));
}

TEST(NodePathHelperTest, EscapeRoundTrip)
{
    for (const std::string id : {"", ".", "..", "...", "%2F", "a/b/c", "Уставка 1", "%%25"}) {
        SCOPED_TRACE(id);
        const std::string step = NodePathHelper::escapeId(id);
        EXPECT_EQ(std::string::npos, step.find('/'));
        EXPECT_NE(".", step);
        EXPECT_NE("..", step);
        std::string back;
        ASSERT_TRUE(NodePathHelper::unescapeId(step, back));
        EXPECT_EQ(id, back);
    }
}

std::string walk(Node* root, bool skipRoot)
{
    std::string order;
    for (Node* node : NodeTreeTraversal(root, skipRoot))
        order += (order.empty() ? "" : " ") + node->getId();
    return order;
}

TEST(NodeTreeTraversalTest, PreOrderDepthFirst)
{
    // r ─ a ─ a1 ─ a11
    //   │   └ a2
    //   ├ b
    //   └ c ─ c1
    Node root("r");
    Node* const a = addChild(&root, "a");
    Node* const a1 = addChild(a, "a1");
    addChild(a1, "a11");
    addChild(a, "a2");
    addChild(&root, "b");
    Node* const c = addChild(&root, "c");
    addChild(c, "c1");

    struct Row {
        const char* text;
        Node* root;
        bool skipRoot;
        std::string order;
    };
    const Row rows[] = {
        {"whole tree with root", &root, false, "r a a1 a11 a2 b c c1"},
        {"whole tree without root", &root, true, "a a1 a11 a2 b c c1"},
        {"subtree stops at its own end", a, false, "a a1 a11 a2"},
        {"last subtree", c, false, "c c1"},
        {"leaf without root", c->at(0), true, ""},
        {"null root, skipped", nullptr, true, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.order, walk(row.root, row.skipRoot));
    }
}

TEST(NodeTreeTraversalTest, IteratorsCompareAndAdvance)
{
    Node root("r");
    addChild(&root, "a");
    const NodeTreeTraversal traversal(&root);
    auto it = traversal.begin();
    EXPECT_TRUE(it != traversal.end());
    EXPECT_EQ(&root, *it++);
    EXPECT_EQ("a", (*it)->getId());
    ++it;
    EXPECT_FALSE(it != traversal.end());
    ++it; // advancing the end stays at the end
    EXPECT_FALSE(it != traversal.end());
}

} // namespace

using TreeTest::loadFromString;
using TreeTest::makeMode;
using TreeTest::saveToString;

namespace {

// A unit with one property of each kind, hung the way units hang them, under a locked structure.
struct PropertyUnit {
    explicit PropertyUnit(const std::string& text = "", bool flag = false, double number = 0.0,
                          Measure* measure = nullptr)
        : unit("Unit")
    {
        unit.lockContainer();
        text_ = static_cast<StringProperty*>(unit.addPropertyInner(
            std::make_unique<StringProperty>("ChannelType", LocalString("Channel type"), LocalString(), text, true)));
        flag_ = static_cast<BooleanProperty*>(
            unit.addPropertyInner(std::make_unique<BooleanProperty>("enableState", LocalString("On"), "", flag)));
        number_ = static_cast<NumericProperty*>(
            unit.addPropertyInner(std::make_unique<NumericProperty>("GroupCount", LocalString("Count"), "", number)));
        measure_ = static_cast<MeasureProperty*>(
            unit.addPropertyInner(std::make_unique<MeasureProperty>("Measure", LocalString("Measure"), "", measure)));
    }

    TestGroup unit;
    StringProperty* text_;
    BooleanProperty* flag_;
    NumericProperty* number_;
    MeasureProperty* measure_;
};

} // namespace

TEST(PropertyTest, ValuesRoundTripWithTheirOwner)
{
    for (std::uint8_t kind : {SerializationMode::System, SerializationMode::User}) {
        SCOPED_TRACE(static_cast<int>(kind));
        std::vector<std::string> problems;
        const SerializationMode mode = makeMode(kind, &problems);

        const PropertyUnit original("hardware \"Binary\" <in>", true, 1.0 / 3.0, Measures::Ohm());
        const std::string saved = saveToString(original.unit, mode);

        PropertyUnit loaded;
        loadFromString(loaded.unit, saved, mode);
        EXPECT_TRUE(problems.empty()) << (problems.empty() ? "" : problems.front());
        EXPECT_EQ(loaded.text_->getValue(), "hardware \"Binary\" <in>");
        EXPECT_TRUE(loaded.flag_->getValue());
        EXPECT_NEAR(loaded.number_->getValue(), 1.0 / 3.0, 1e-15);
        EXPECT_EQ(loaded.measure_->getValue(), Measures::Ohm());
        EXPECT_EQ(saveToString(loaded.unit, mode), saved);

        // The unset values go back as well: a null measure, an empty text, false.
        const PropertyUnit empty;
        loadFromString(loaded.unit, saveToString(empty.unit, mode), mode);
        EXPECT_EQ(loaded.text_->getValue(), "");
        EXPECT_FALSE(loaded.flag_->getValue());
        EXPECT_EQ(loaded.number_->getValue(), 0.0);
        EXPECT_EQ(loaded.measure_->getValue(), nullptr);
    }
}

TEST(PropertyTest, BadTextIsReportedAndLeavesTheValue)
{
    struct Row {
        const char* id;
        const char* text;
    };
    const Row rows[] = {{"enableState", "maybe"}, {"GroupCount", "2,5"}, {"Measure", "Parsec"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.id) + " = '" + row.text + "'");
        std::vector<std::string> problems;
        const SerializationMode mode = makeMode(SerializationMode::User, &problems);
        PropertyUnit loaded("kept", true, 4.0, Measures::Volt());
        const std::string text = std::string("<Root><Node Id=\"Unit\"><Node Id=\"") + row.id + "\" Value=\"" + row.text
                                 + "\"/><Node Id=\"ChannelType\" Value=\"after\"/></Node></Root>";
        loadFromString(loaded.unit, text, mode);
        ASSERT_EQ(problems.size(), 1u);
        EXPECT_NE(problems.front().find(row.id), std::string::npos) << problems.front();
        EXPECT_TRUE(loaded.flag_->getValue());
        EXPECT_EQ(loaded.number_->getValue(), 4.0);
        EXPECT_EQ(loaded.measure_->getValue(), Measures::Volt());
        // Reading went on with the next property.
        EXPECT_EQ(loaded.text_->getValue(), "after");
    }
}

TEST(PropertyTest, SetterComparesFirstAndSignalsInOrder)
{
    PropertyUnit owner;
    NumericProperty& number = *owner.number_;
    std::vector<std::string> events;
    number.getSignalValueOutChanged().connect([&] { events.push_back("out " + std::to_string(number.getValue())); });
    number.getSignalValueChanged().connect([&] { events.push_back("value"); });

    number.setValue(0.0);
    EXPECT_TRUE(events.empty());
    number.setData(2.0);
    EXPECT_EQ(events, (std::vector<std::string>{"out 2.000000", "value"}));

    const double quietNan = std::numeric_limits<double>::quiet_NaN();
    number.setValue(quietNan);
    number.setValue(quietNan);
    EXPECT_EQ(events.size(), 4u);
}

namespace {

std::vector<std::string> valuesOf(const EnumLimiter& limiter)
{
    std::vector<std::string> values;
    for (const EnumItem* item : limiter.getItems())
        values.push_back(item->getValue());
    return values;
}

SerializationMode userMode(std::vector<std::string>* problems)
{
    SerializationMode mode;
    mode.kind = SerializationMode::User;
    mode.problems = problems;
    return mode;
}

} // namespace

TEST(EnumLimiterTest, ChangedFiresOncePerChange)
{
    EnumLimiter limiter;
    int fired = 0;
    std::size_t countSeen = 0;
    limiter.getSignalChanged().connect([&] {
        ++fired;
        countSeen = limiter.count();
    });

    limiter.addItem("a", LocalString("A"));
    limiter.addItem("b", LocalString("B"));
    limiter.addItem("c", LocalString("C"));
    EXPECT_EQ(fired, 3);
    EXPECT_EQ(countSeen, 3u);

    limiter.remove(limiter.findByValue("b"));
    EXPECT_EQ(fired, 4);

    // Clearing several items is one change, told when the list is already empty.
    limiter.clearItems();
    EXPECT_EQ(fired, 5);
    EXPECT_EQ(countSeen, 0u);
    limiter.clearItems();
    EXPECT_EQ(fired, 5);

    // The batch of a clearing is over: the next change is told again.
    limiter.addItem("d", LocalString("D"));
    EXPECT_EQ(fired, 6);
}

TEST(EnumLimiterTest, LockedLimiterRefusesAndStaysSilent)
{
    TestGroup owner("Unit");
    auto* limiter = static_cast<EnumLimiter*>(owner.addPropertyInner(std::make_unique<EnumLimiter>()));
    limiter->addItem("a", LocalString("A"));
    owner.lockChildContainer(limiter);
    int fired = 0;
    limiter->getSignalChanged().connect([&] { ++fired; });

    EXPECT_THROW(limiter->addItem("b", LocalString("B")), std::logic_error);
    EXPECT_THROW(limiter->clearItems(), std::logic_error);
    EXPECT_THROW(limiter->remove(limiter->findByValue("a")), std::logic_error);
    EXPECT_EQ(valuesOf(*limiter), std::vector<std::string>{"a"});
    EXPECT_EQ(fired, 0);
}

TEST(EnumLimiterTest, SavedAndReadWithItsOwner)
{
    std::vector<std::string> problems;
    const SerializationMode mode = userMode(&problems);

    TestGroup original("Unit");
    auto* limiter = static_cast<EnumLimiter*>(original.addPropertyInner(std::make_unique<EnumLimiter>()));
    limiter->addItem("a|1", LocalString::create("First", "Первый"));
    limiter->addItem("", LocalString("Nothing"));
    limiter->addItem("c <&>", LocalString::Empty());
    const std::string saved = saveToString(original, mode);

    // The reader's limiter has items of its own; the file's list replaces them in one change.
    TestGroup loaded("Unit");
    auto* target = static_cast<EnumLimiter*>(loaded.addPropertyInner(std::make_unique<EnumLimiter>()));
    target->addItem("old", LocalString("Old"));
    target->addItem("a|1", LocalString("Stale"));
    int fired = 0;
    target->getSignalChanged().connect([&] { ++fired; });
    loadFromString(loaded, saved, mode);

    EXPECT_TRUE(problems.empty()) << (problems.empty() ? "" : problems.front());
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(valuesOf(*target), (std::vector<std::string>{"a|1", "", "c <&>"}));
    EXPECT_EQ(target->findByValue("a|1")->getDisplay().getValue("ru"), "Первый");
    EXPECT_EQ(saveToString(loaded, mode), saved);
}

TEST(EnumLimiterTest, LockedLimiterKeepsItsItemsOnReading)
{
    std::vector<std::string> problems;
    const SerializationMode mode = userMode(&problems);
    TestGroup original("Unit");
    auto* limiter = static_cast<EnumLimiter*>(original.addPropertyInner(std::make_unique<EnumLimiter>()));
    limiter->addItem("fromFile", LocalString("From file"));
    const std::string saved = saveToString(original, mode);

    TestGroup loaded("Unit");
    auto* target = static_cast<EnumLimiter*>(loaded.addPropertyInner(std::make_unique<EnumLimiter>()));
    target->addItem("fromCode", LocalString("From code"));
    loaded.lockChildContainer(target);
    loadFromString(loaded, saved, mode);
    EXPECT_EQ(valuesOf(*target), std::vector<std::string>{"fromCode"});
}

TEST(EnumLimiterTest, BrokenItemsAreReportedAndReadingGoesOn)
{
    std::vector<std::string> problems;
    const SerializationMode mode = userMode(&problems);
    const std::string text =
        "<Root><Node Id=\"Unit\"><Node Id=\"Limiter\">"
        "<Node Id=\"a\" Value=\"a\"><Display Text=\"A\"><Value Text=\"no language\"/></Display></Node>"
        "<Node Value=\"no id\"/>"
        "<Node Id=\"b\" Value=\"b\"><Display Text=\"B\"/></Node>"
        "</Node></Node></Root>";
    TestGroup loaded("Unit");
    auto* target = static_cast<EnumLimiter*>(loaded.addPropertyInner(std::make_unique<EnumLimiter>()));
    loadFromString(loaded, text, mode);
    EXPECT_EQ(valuesOf(*target), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(problems.size(), 2u);
    EXPECT_EQ(target->findByValue("a")->getDisplay().getValue("en"), "");
    EXPECT_EQ(target->findByValue("b")->getDisplay().getValue("en"), "B");
}

namespace {

using ContactUnitsTest::HardwareNode;
using ContactUnitsTest::moveTo;
using ZemDevice::HardwareManager;
using ZemTree::HardwareContainerRootWatcher;

// A watched node that is a hardware container itself, so that a test sees the watcher pass over the node's own
// hardware. It records every published answer.
class WatchedNode : public HardwareNode {
public:
    explicit WatchedNode(const std::string& id = "Watched") : HardwareNode(id), watcher(this)
    {
        watcher.getSignalParentHardwareChanged().connect([this] { published.push_back(watcher.getHardware()); });
    }

    HardwareContainerRootWatcher watcher;
    std::vector<HardwareManager*> published;
};

TEST(HardwareContainerRootWatcherTest, NodeNeverFindsItsOwnHardware)
{
    HardwareManager own;
    HardwareManager above;
    HardwareNode root("Root");
    WatchedNode* const node = root.add(std::make_unique<WatchedNode>());
    node->setHardware(&own);
    EXPECT_EQ(nullptr, node->watcher.getHardware());
    EXPECT_TRUE(node->published.empty());

    root.setHardware(&above);
    EXPECT_EQ(&above, node->watcher.getHardware());
    EXPECT_EQ(std::vector<HardwareManager*>{&above}, node->published);
}

TEST(HardwareContainerRootWatcherTest, NearerHardwareWinsAndFartherChangesBehindItStayQuiet)
{
    HardwareManager far;
    HardwareManager near;
    HardwareManager farAgain;
    HardwareNode root("Root");
    // A plain node between the containers is passed over.
    Node* const plain = root.add(std::make_unique<Node>("Plain"));
    HardwareNode* const middle = plain->add(std::make_unique<HardwareNode>("Middle"));
    WatchedNode* const node = middle->add(std::make_unique<WatchedNode>());
    EXPECT_TRUE(node->published.empty());

    root.setHardware(&far);
    middle->setHardware(&near);
    root.setHardware(&farAgain);
    EXPECT_EQ((std::vector<HardwareManager*>{&far, &near}), node->published);

    // Without the nearer hardware the farther one applies again.
    middle->setHardware(nullptr);
    EXPECT_EQ((std::vector<HardwareManager*>{&far, &near, &farAgain}), node->published);
}

TEST(HardwareContainerRootWatcherTest, NodeAddedUnderHardwarePublishesItOnceAndSameAnswerNothing)
{
    HardwareManager hardware;
    HardwareNode root("Root", &hardware);
    HardwareNode* const middle = root.add(std::make_unique<HardwareNode>("Middle"));
    auto owned = std::make_unique<WatchedNode>();
    EXPECT_EQ(nullptr, owned->watcher.getHardware());
    WatchedNode* const node = middle->add(std::move(owned));
    ASSERT_EQ(std::vector<HardwareManager*>{&hardware}, node->published);
    EXPECT_EQ(&hardware, node->watcher.getHardware());

    root.announceUnchanged();
    middle->announceUnchanged();
    middle->setHardware(&hardware);

    EXPECT_EQ(1u, node->published.size());
}

TEST(HardwareContainerRootWatcherTest, MoveAwayPublishesNullAndTheOldPlaceIsForgotten)
{
    HardwareManager hardware;
    HardwareManager later;
    HardwareNode root("Root");
    HardwareNode* const withHardware = root.add(std::make_unique<HardwareNode>("With", &hardware));
    HardwareNode* const without = root.add(std::make_unique<HardwareNode>("Without"));
    WatchedNode* node = withHardware->add(std::make_unique<WatchedNode>());

    node = moveTo(node, without);
    EXPECT_EQ((std::vector<HardwareManager*>{&hardware, nullptr}), node->published);
    EXPECT_EQ(nullptr, node->watcher.getHardware());

    withHardware->setHardware(&later);
    withHardware->setHardware(nullptr);
    EXPECT_EQ(2u, node->published.size());

    // The new place is watched: also the root, which was an ancestor before and still is.
    root.setHardware(&later);
    EXPECT_EQ((std::vector<HardwareManager*>{&hardware, nullptr, &later}), node->published);
}

TEST(HardwareContainerRootWatcherTest, MovingAnAncestorMovesTheWatch)
{
    HardwareManager first;
    HardwareManager second;
    HardwareNode root("Root");
    HardwareNode* const left = root.add(std::make_unique<HardwareNode>("Left", &first));
    HardwareNode* const right = root.add(std::make_unique<HardwareNode>("Right", &second));
    Node* group = left->add(std::make_unique<Node>("Group"));
    WatchedNode* const node = group->add(std::make_unique<WatchedNode>());

    group = moveTo(group, right);

    EXPECT_EQ(&second, node->watcher.getHardware());
    EXPECT_EQ(&second, node->published.back());
    const std::size_t count = node->published.size();
    left->setHardware(nullptr);
    EXPECT_EQ(count, node->published.size());
}

TEST(HardwareContainerRootWatcherTest, FollowsTheHardwareOfTheTreeContainers)
{
    HardwareManager hardware;
    ZemTree::UnitableStructureContainer root("Root");
    WatchedNode* const node = root.add(std::make_unique<WatchedNode>());
    root.setHardware(&hardware);
    root.setHardware(&hardware);
    EXPECT_EQ(std::vector<HardwareManager*>{&hardware}, node->published);
}

TEST(HardwareContainerRootWatcherTest, DyingAncestorLeavesNoDanglingWatch)
{
    HardwareManager hardware;
    HardwareNode root("Root");
    HardwareNode* const middle = root.add(std::make_unique<HardwareNode>("Middle", &hardware));
    WatchedNode* node = middle->add(std::make_unique<WatchedNode>());
    node = moveTo(node, &root);
    // The former parent dies; the watcher must not be reached through it any more.
    root.remove(middle);
    root.setHardware(&hardware);
    EXPECT_EQ((std::vector<HardwareManager*>{&hardware, nullptr, &hardware}), node->published);
}

namespace fs = std::filesystem;
using ZemTree::DisplayXmlParameters;

using TempFolder = ZemTreeTest::TemporaryFolder;

TEST(DisplayXmlParametersTest, NamesAreDistinctAndFreeAndInTheImageFolder)
{
    const TempFolder temp;
    DisplayXmlParameters parameters(temp.path().string());
    const fs::path imageFolder = temp.path() / "images";
    EXPECT_EQ(imageFolder.string(), parameters.getImageFolder());

    // A picture left by an earlier report must not be overwritten.
    fs::create_directories(imageFolder);
    std::ofstream(imageFolder / "image_0002.png") << "old";

    std::set<std::string> names;
    for (int i = 0; i < 3; ++i) {
        const std::string name = parameters.generateNewImageName();
        SCOPED_TRACE(name);
        EXPECT_EQ(imageFolder, fs::path(name).parent_path());
        EXPECT_EQ(".png", fs::path(name).extension());
        EXPECT_FALSE(fs::exists(name));
        EXPECT_TRUE(names.insert(name).second);
        // The caller writes the picture; the next name must still differ.
        std::ofstream(name) << "png";
    }
    EXPECT_EQ(0u, names.count((imageFolder / "image_0002.png").string()));
}

TEST(DisplayXmlParametersTest, CreatesTheImageFolderAndHonoursSubFolderAndPrefix)
{
    const TempFolder temp;
    DisplayXmlParameters parameters((temp.path() / "report").string(), "pictures/graphs", "graph_");
    const std::string name = parameters.generateNewImageName();
    EXPECT_TRUE(fs::is_directory(temp.path() / "report" / "pictures" / "graphs"));
    EXPECT_EQ("graph_0001.png", fs::path(name).filename().string());

    DisplayXmlParameters beside(temp.path().string(), "");
    EXPECT_EQ(temp.path(), fs::path(beside.generateNewImageName()).parent_path());
}

TEST(DisplayXmlParametersTest, ThrowsWhenTheFolderCannotBeMade)
{
    const TempFolder temp;
    std::ofstream(temp.path() / "file") << "x";
    DisplayXmlParameters parameters((temp.path() / "file").string());
    EXPECT_THROW(parameters.generateNewImageName(), std::runtime_error);
}

} // namespace
