#include "ContainerTestNodes.h"
#include "containers/DefendCollectionContainer.h"
#include "containers/DescriptorsContainer.h"
#include "containers/SpecialModuleInfo.h"
#include "containers/UnitContainer.h"
#include "containers/UniversalGeneralContainer.h"
#include "core/tree/NodeTemplateActivator.h"
#include "core/tree/NodeTemplateActivatorCollection.h"
#include "core/tree/StringUnit.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace ZemTree;
using namespace ZemTreeTest;

namespace {

class RootTest : public SampleTest, public virtual IRootContainer {};
class RootObject : public HierarchicalContainer, public virtual IRootContainer {};

class OtherTest : public TestContainer {
public:
    OtherTest() : TestContainer("Other") {}
};

// A protection that takes only sample tests.
class PickyProtection : public DefendContainer {
public:
    PickyProtection() : DefendContainer("Picky") {}
    int asked = 0;

protected:
    bool _canContainsTest(Node* item) override
    {
        ++asked;
        return dynamic_cast<SampleTest*>(item) != nullptr;
    }
};

} // namespace

TEST(CollectionContainers, TestCollectionAcceptsPlainTestsOnly)
{
    TestCollectionContainer tests;
    SampleTest test;
    RootTest rootTest;
    DefendContainer protection;
    NumberUnit unit;
    EXPECT_TRUE(tests.canContains(&test));
    EXPECT_FALSE(tests.canContains(&rootTest));
    EXPECT_FALSE(tests.canContains(&protection));
    EXPECT_FALSE(tests.canContains(&unit));
    EXPECT_FALSE(tests.canContains(nullptr));
    EXPECT_THROW(tests.add(std::make_unique<DefendContainer>()), std::logic_error);
    EXPECT_TRUE(tests.empty());
}

TEST(CollectionContainers, PredicateDecidesAfterTheClass)
{
    TestCollectionContainer none("Tests", [](Node*) { return false; });
    SampleTest test;
    EXPECT_FALSE(none.canContains(&test));

    int asked = 0;
    DefendCollectionContainer defends("Defends", [&asked](Node*) {
        ++asked;
        return true;
    });
    SampleTest notAProtection;
    EXPECT_FALSE(defends.canContains(&notAProtection));
    EXPECT_EQ(asked, 0);
    SampleProtection protection;
    EXPECT_TRUE(defends.canContains(&protection));
    EXPECT_EQ(asked, 1);
}

TEST(CollectionContainers, HierarchicalCollectionRefusesRoots)
{
    HierarchicalContainer object("Object");
    object.initContainer();
    EXPECT_NO_THROW(object.getContainers()->add(std::make_unique<HierarchicalContainer>("Inner")));
    EXPECT_NO_THROW(object.getContainers()->add(std::make_unique<SampleProtection>("Protection")));
    EXPECT_THROW(object.getContainers()->add(std::make_unique<RootObject>()), std::logic_error);
    EXPECT_THROW(object.getContainers()->add(std::make_unique<DefendContainer>()), std::logic_error);
    EXPECT_EQ(object.getContainers()->size(), 2u);
}

TEST(CollectionContainers, ProtectionFilterIsAskedOnEveryAdd)
{
    PickyProtection protection;
    protection.initContainer();
    EXPECT_NO_THROW(protection.getTests()->add(std::make_unique<SampleTest>("A")));
    EXPECT_THROW(protection.getTests()->add(std::make_unique<OtherTest>()), std::logic_error);
    EXPECT_NO_THROW(protection.getTests()->add(std::make_unique<SampleTest>("B")));
    EXPECT_EQ(protection.asked, 3);
    EXPECT_EQ(protection.getTests()->size(), 2u);
}

namespace {

using Flag = Zem::Nullable<bool>;
const Flag empty;

// Root > Collection > protections > Tests > tests, with each test's flag as given.
struct Tree {
    SampleRoot root;
    std::vector<SampleProtection*> protections;
    std::vector<std::vector<SampleTest*>> tests;

    explicit Tree(const std::vector<std::vector<bool>>& flags)
    {
        root.initContainer();
        for (std::size_t p = 0; p < flags.size(); ++p) {
            auto* protection = addFilled<SampleProtection>(root.getContainers(), "P" + std::to_string(p));
            protections.push_back(protection);
            tests.emplace_back();
            for (std::size_t t = 0; t < flags[p].size(); ++t) {
                auto* test = addFilled<SampleTest>(protection->getTests(), "T" + std::to_string(t));
                test->setIsEvaluated(flags[p][t]);
                tests.back().push_back(test);
            }
        }
    }
};

// Counts the evaluated signals of every testable container below a node, the node included.
class SignalCounter {
public:
    explicit SignalCounter(Node* node) { _watch(node); }
    int of(Node* node) const
    {
        const auto found = _counts.find(dynamic_cast<ITestableContainer*>(node));
        return found == _counts.end() ? 0 : found->second;
    }
    int total() const
    {
        int sum = 0;
        for (const auto& entry : _counts)
            sum += entry.second;
        return sum;
    }

private:
    void _watch(Node* node)
    {
        if (auto* testable = dynamic_cast<TestableContainer*>(node))
            testable->getSignalIsEvaluatedChanged().connect([this](ITestableContainer* source) { ++_counts[source]; });
        for (Node* child : *node)
            _watch(child);
    }
    std::map<ITestableContainer*, int> _counts;
};

} // namespace

TEST(TestableContainer, CascadeOfTheEvaluatedFlag)
{
    struct Row {
        const char* text;
        std::vector<std::vector<bool>> flags;
        std::vector<Flag> protections;
        Flag root;
    };
    const std::vector<Row> rows = {
        {"all chosen", {{true, true}, {true}}, {true, true}, true},
        {"none chosen", {{false, false}, {false}}, {false, false}, false},
        {"mixed in one protection", {{true, false}, {true}}, {empty, true}, empty},
        {"protections differ", {{true, true}, {false}}, {true, false}, empty},
        {"an empty protection empties its parent", {{true}, {}}, {true, empty}, empty},
        {"nothing at all", {}, {}, empty},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        Tree tree(row.flags);
        for (std::size_t p = 0; p < row.protections.size(); ++p)
            EXPECT_EQ(tree.protections[p]->getIsEvaluated(), row.protections[p]) << "protection " << p;
        EXPECT_EQ(tree.root.getIsEvaluated(), row.root);
    }
}

TEST(TestableContainer, SetOnMixedGroupPublishesOnceOnEachChangedContainer)
{
    Tree tree({{true, false}, {true}});
    SignalCounter counter(&tree.root);
    SampleProtection* mixed = tree.protections[0];

    mixed->setIsEvaluated(true);

    EXPECT_EQ(counter.of(tree.tests[0][1]), 1);
    EXPECT_EQ(counter.of(mixed->getTests()), 1);
    EXPECT_EQ(counter.of(mixed), 1);
    EXPECT_EQ(counter.of(tree.root.getContainers()), 1);
    EXPECT_EQ(counter.of(&tree.root), 1);
    // Already chosen: nothing to publish.
    EXPECT_EQ(counter.of(tree.tests[0][0]), 0);
    EXPECT_EQ(counter.of(tree.protections[1]), 0);
    EXPECT_EQ(counter.total(), 5);
    EXPECT_EQ(tree.root.getIsEvaluated(), Flag(true));

    // The same again changes nothing and says nothing.
    mixed->setIsEvaluated(true);
    EXPECT_EQ(counter.total(), 5);
}

TEST(TestableContainer, AddingAndRemovingAChosenTest)
{
    Tree tree({{false, false}});
    SampleProtection* group = tree.protections[0];
    SignalCounter counter(&tree.root);

    auto chosen = std::make_unique<SampleTest>("Chosen");
    chosen->initContainer();
    chosen->setIsEvaluated(true);
    SampleTest* added = group->getTests()->add(std::move(chosen));

    EXPECT_EQ(group->getIsEvaluated(), empty);
    EXPECT_EQ(tree.root.getIsEvaluated(), empty);
    EXPECT_EQ(counter.of(group), 1);
    EXPECT_EQ(counter.of(&tree.root), 1);

    group->getTests()->remove(added);

    EXPECT_EQ(group->getIsEvaluated(), Flag(false));
    EXPECT_EQ(tree.root.getIsEvaluated(), Flag(false));
    EXPECT_EQ(counter.of(group), 2);
    EXPECT_EQ(counter.of(group->getTests()), 2);
    EXPECT_EQ(counter.of(&tree.root), 2);
}

TEST(TestableContainer, RemovingAnEmptyGroupRestoresItsParent)
{
    Tree tree({{true}, {}});
    ASSERT_EQ(tree.root.getIsEvaluated(), empty);
    SignalCounter counter(&tree.root);

    tree.root.getContainers()->remove(tree.protections[1]);

    EXPECT_EQ(tree.root.getIsEvaluated(), Flag(true));
    EXPECT_EQ(counter.of(&tree.root), 1);
}

namespace {

std::unique_ptr<xmlpp::Document> parse(const std::string& text)
{
    xmlpp::DomParser parser;
    parser.parse_memory(text);
    auto document = std::make_unique<xmlpp::Document>();
    document->create_root_node_by_import(parser.get_document()->get_root_node());
    return document;
}

} // namespace

TEST(UnitableStructureContainer, InitContainerFillsAndLocksOnce)
{
    SampleTest test;
    test.initContainer();
    test.initContainer();
    EXPECT_EQ(test.fillCount, 1);
    EXPECT_EQ(test.filledCount, 1);
    EXPECT_EQ(test.getSettings()->size(), 1u);
    EXPECT_EQ(test.getResults()->size(), 2u);
    EXPECT_TRUE(test.isInited());
}

TEST(UnitableStructureContainer, FixedHierarchicalModeRefusesOnlyAnotherMode)
{
    SettingsContainer settings;
    EXPECT_NO_THROW(settings.setHierarchicalMode(ContainerHierarchicalMode::Settings));
    EXPECT_THAT([&] { settings.setHierarchicalMode(ContainerHierarchicalMode::Parameters); },
                ::testing::ThrowsMessage<std::logic_error>(::testing::StrEq("Hierarchical mode is fixed")));
    EXPECT_EQ(settings.getHierarchicalMode(), ContainerHierarchicalMode::Settings);

    UnitContainer free;
    free.setHierarchicalMode(ContainerHierarchicalMode::Parameters);
    EXPECT_EQ(free.getHierarchicalMode(), ContainerHierarchicalMode::Parameters);
}

TEST(UnitableStructureContainer, HierarchicalModeIsSavedOnlyInTemplatesOfFreeContainers)
{
    struct Row {
        const char* text;
        ContainerHierarchicalMode mode;
        std::uint8_t kind;
        const char* expected;
    };
    const Row rows[] = {
        {"settings in a template", ContainerHierarchicalMode::Settings, SerializationMode::System, "Settings"},
        {"parameters in a template", ContainerHierarchicalMode::Parameters, SerializationMode::System, "Parameters"},
        {"none is not written", ContainerHierarchicalMode::None, SerializationMode::System, "<none>"},
        {"a project carries no mode", ContainerHierarchicalMode::Settings, SerializationMode::User, "<none>"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        DefendCollectionContainer collection;
        collection.setHierarchicalMode(row.mode);
        xmlpp::Document document;
        const xmlpp::Element* element = collection.getXml(document.create_root_node("Doc"), modeOf(row.kind));
        EXPECT_EQ(attributeOf(element, "NodeHierarchicalMode"), row.expected);
    }

    TestCollectionContainer tests;
    xmlpp::Document document;
    EXPECT_EQ(attributeOf(tests.getXml(document.create_root_node("Doc"), modeOf(SerializationMode::System)),
                          "NodeHierarchicalMode"),
              "<none>");
}

TEST(UnitableStructureContainer, HierarchicalModeIsReadFromTemplates)
{
    struct Row {
        const char* word;
        std::uint8_t kind;
        ContainerHierarchicalMode expected;
    };
    const Row rows[] = {
        {"Parameters", SerializationMode::System, ContainerHierarchicalMode::Parameters},
        {"Settings", SerializationMode::System, ContainerHierarchicalMode::Settings},
        {"Bogus", SerializationMode::System, ContainerHierarchicalMode::None},
        {"", SerializationMode::System, ContainerHierarchicalMode::None},
        {"Settings", SerializationMode::User, ContainerHierarchicalMode::Parameters},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.word);
        DefendCollectionContainer collection;
        collection.setHierarchicalMode(ContainerHierarchicalMode::Parameters);
        auto document = parse(std::string("<Node Id='Defends' NodeHierarchicalMode='") + row.word + "'/>");
        collection.setXml(document->get_root_node(), modeOf(row.kind));
        EXPECT_EQ(collection.getHierarchicalMode(), row.expected);
    }

    // A fixed container ignores what a file says instead of refusing it.
    SettingsContainer settings;
    auto document = parse("<Node Id='Settings' NodeHierarchicalMode='Parameters'/>");
    EXPECT_NO_THROW(settings.setXml(document->get_root_node(), modeOf(SerializationMode::System)));
    EXPECT_EQ(settings.getHierarchicalMode(), ContainerHierarchicalMode::Settings);
}

TEST(UnitableStructureContainer, TemplateXmlDependsOnKindAndPosition)
{
    NodeTemplateActivator activator(nullptr, "Distance", "/templates/protections/Distance.v2.xml");
    struct Row {
        const char* text;
        bool isChild;
        std::uint8_t kind;
        const char* expected;
    };
    const Row rows[] = {
        {"root in a template is the template", false, SerializationMode::System, "<none>"},
        {"root in a project", false, SerializationMode::User, "Distance.v2"},
        {"child in a template", true, SerializationMode::System, "Distance.v2"},
        {"child in a project", true, SerializationMode::User, "Distance.v2"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        SampleRoot root;
        root.initContainer();
        auto* protection = addFilled<SampleProtection>(root.getContainers(), "Protection");
        UnitableStructureContainer* bound = row.isChild ? static_cast<UnitableStructureContainer*>(protection) : &root;
        bound->setTemplateActivator(&activator);

        xmlpp::Document document;
        const xmlpp::Element* element = bound->getXml(document.create_root_node("Doc"), modeOf(row.kind));
        EXPECT_EQ(attributeOf(element, "TemplateXml"), row.expected);
    }
}

TEST(UnitableStructureContainer, ProjectRebuildsTheStructureFromItsTemplateFirst)
{
    registerSampleTypes();
    TemporaryFolder folder;
    SampleTest source("Measure");
    source.initContainer();
    source.current->setDefaultData(9.5);
    NodeTemplateActivator::saveTemplate(&source, folder.file("SampleMeasure.xml"));
    NodeTemplateActivatorCollection::instance().add("SampleMeasure-rebuild", folder.file("SampleMeasure.xml"));

    // The project names the template and overrides nothing: the template's value stands.
    SampleTest loaded("Measure");
    auto document = parse("<Node Id='Measure' TemplateXml='SampleMeasure-rebuild' IsEvaluated='true'/>");
    std::vector<std::string> problems;
    SerializationMode mode = modeOf(SerializationMode::User);
    mode.problems = &problems;
    loaded.setXml(document->get_root_node(), mode);

    EXPECT_EQ(loaded.fillCount, 1);
    EXPECT_DOUBLE_EQ(loaded.current->getNativeData(), 9.5);
    EXPECT_EQ(loaded.getIsEvaluated(), Zem::Nullable<bool>(true));
    ASSERT_NE(loaded.getTemplateActivator(), nullptr);
    EXPECT_EQ(loaded.getTemplateActivator()->getName(), "SampleMeasure-rebuild");
    EXPECT_TRUE(problems.empty()) << problems.front();
}

TEST(UnitableStructureContainer, TemplateThatContainsItselfIsAppliedOnce)
{
    TemporaryFolder folder;
    const std::string path = folder.file("Loop.xml");
    {
        std::ofstream file(path);
        file << "<Template><Node Id='Object' Class='ZemTree::HierarchicalContainer'><Node Id='Collection'>"
                "<Node Id='Inner' Class='ZemTree::HierarchicalContainer' TemplateXml='LoopTemplate'/>"
                "</Node></Node></Template>";
    }
    NodeTemplateActivatorCollection::instance().add("LoopTemplate", path);

    HierarchicalContainer object("Object");
    auto document = parse("<Node Id='Object' TemplateXml='LoopTemplate'/>");
    object.setXml(document->get_root_node(), modeOf(SerializationMode::User));

    // The inner object is built from the template's element but does not apply the template again.
    ASSERT_EQ(object.getContainers()->size(), 1u);
    auto* inner = dynamic_cast<HierarchicalContainer*>(object.getContainers()->at(0));
    ASSERT_NE(inner, nullptr);
    EXPECT_TRUE(inner->isInited());
    EXPECT_TRUE(inner->getContainers()->empty());
}

namespace {

std::vector<std::string> childIds(const Node& node)
{
    std::vector<std::string> ids;
    for (const Node* child : node)
        ids.push_back(child->getId());
    return ids;
}

const xmlpp::Element* specialInfoOf(const UniversalGeneralContainer& item, std::uint8_t kind, xmlpp::Document& document)
{
    SerializationMode mode;
    mode.kind = kind;
    const xmlpp::Element* element = item.getXml(document.create_root_node("Doc"), mode);
    const auto found = element->find("SpecialInfo");
    return found.empty() ? nullptr : static_cast<const xmlpp::Element*>(found.front());
}

} // namespace

TEST(UniversalGeneralContainer, OnlyARootItemHasDescriptors)
{
    SampleRoot root;
    root.initContainer();
    EXPECT_EQ(childIds(root), (std::vector<std::string>{"Descriptors", "Settings", "Parameters", "Collection"}));
    auto* protection = addFilled<SampleProtection>(root.getContainers(), "Protection");
    EXPECT_EQ(childIds(*protection), (std::vector<std::string>{"Settings", "Parameters", "Tests"}));
    EXPECT_EQ(protection->getDescriptors(), nullptr);
}

TEST(UniversalGeneralContainer, FilledItemRefusesStructureChangesButDescriptorsStayOpen)
{
    SampleTest test("Test");
    test.initContainer();
    const std::size_t children = test.size();
    const std::size_t settings = test.getSettings()->size();
    const std::size_t parameters = test.getParameters()->size();
    const std::size_t results = test.getResults()->size();

    EXPECT_THROW(test.add(std::make_unique<ParametersContainer>("More")), std::logic_error);
    EXPECT_THROW(test.getSettings()->add(std::make_unique<NumberUnit>("Extra")), std::logic_error);
    EXPECT_THROW(test.getParameters()->add(std::make_unique<NumberUnit>("Extra")), std::logic_error);
    EXPECT_THROW(test.getResults()->add(std::make_unique<FakeResultUnit>("Extra")), std::logic_error);
    EXPECT_THROW(test.getSettings()->remove(test.current), std::logic_error);
    EXPECT_EQ(test.size(), children);
    EXPECT_EQ(test.getSettings()->size(), settings);
    EXPECT_EQ(test.getParameters()->size(), parameters);
    EXPECT_EQ(test.getResults()->size(), results);

    EXPECT_NO_THROW(test.getDescriptors()->add(std::make_unique<StringUnit>("Serial", "Serial number")));
    EXPECT_THROW(test.getDescriptors()->add(std::make_unique<NumberUnit>("Number")), std::logic_error);

    // Results are the one section that can be reopened.
    test.getResults()->unlockContainer();
    EXPECT_NO_THROW(test.getResults()->add(std::make_unique<FakeResultUnit>("Extra")));
}

TEST(UniversalGeneralContainer, DescriptorsAreEditableOnlyWhileTheItemIsARoot)
{
    HierarchicalContainer parent("Parent");
    parent.initContainer();
    auto moved = std::make_unique<HierarchicalContainer>("Moved");
    moved->initContainer();
    DescriptorsContainer* descriptors = moved->getDescriptors();
    ASSERT_NE(descriptors, nullptr);

    HierarchicalContainer* inside = parent.getContainers()->add(std::move(moved));
    EXPECT_FALSE(descriptors->getIsEditable().get().hasValue());

    std::unique_ptr<Node> out = parent.getContainers()->release(inside);
    EXPECT_EQ(descriptors->getIsEditable().get(), Zem::NullableBool(true));
}

TEST(UniversalGeneralContainer, SpecialInfoIsPartOfTemplatesOnly)
{
    UniversalGeneralContainer item("Item");
    item.initContainer();
    auto info = std::make_unique<SpecialModuleInfo>();
    info->setUid(18446744073709551615ull);
    info->setIconPath("icons/distance.png");
    info->setExtension(".dst");
    info->setTitle("Distance");
    info->setHelpPath("help/distance.html");
    item.setSpecialModuleInfo(std::move(info));

    xmlpp::Document project;
    EXPECT_EQ(specialInfoOf(item, SerializationMode::User, project), nullptr);

    xmlpp::Document templateDocument;
    const xmlpp::Element* element = specialInfoOf(item, SerializationMode::System, templateDocument);
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(element->get_attribute_value("UID"), "18446744073709551615");
    EXPECT_EQ(element->get_attribute_value("Icon"), "icons/distance.png");
    EXPECT_EQ(element->get_attribute_value("Extension"), ".dst");

    // Read back: `Help` carries the title, so the help path is the title after a round trip.
    UniversalGeneralContainer copy("Item");
    SerializationMode mode;
    mode.kind = SerializationMode::System;
    copy.setXml(const_cast<xmlpp::Element*>(static_cast<const xmlpp::Element*>(element->get_parent())), mode);
    ASSERT_NE(copy.getSpecialModuleInfo(), nullptr);
    EXPECT_EQ(copy.getSpecialModuleInfo()->getUid(), 18446744073709551615ull);
    EXPECT_EQ(copy.getSpecialModuleInfo()->getTitle(), "Distance");
    EXPECT_EQ(copy.getSpecialModuleInfo()->getHelpPath(), "Distance");
    EXPECT_EQ(copy.getSpecialModuleInfo()->getExtension(), ".dst");

    // A project read leaves it alone.
    UniversalGeneralContainer user("Item");
    mode.kind = SerializationMode::User;
    user.setXml(const_cast<xmlpp::Element*>(static_cast<const xmlpp::Element*>(element->get_parent())), mode);
    EXPECT_EQ(user.getSpecialModuleInfo(), nullptr);
}

TEST(UniversalGeneralContainer, BadUidIsAStandardException)
{
    struct Row {
        const char* xml;
        bool isOutOfRange;
    };
    const Row rows[] = {
        {"<Node Id='Item'><SpecialInfo Icon='x'/></Node>", false},
        {"<Node Id='Item'><SpecialInfo UID='twelve'/></Node>", false},
        {"<Node Id='Item'><SpecialInfo UID='99999999999999999999999'/></Node>", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.xml);
        xmlpp::DomParser parser;
        parser.parse_memory(row.xml);
        SpecialModuleInfo info;
        if (row.isOutOfRange)
            EXPECT_THROW(info.setXml(parser.get_document()->get_root_node()), std::out_of_range);
        else
            EXPECT_THROW(info.setXml(parser.get_document()->get_root_node()), std::invalid_argument);
    }
}
