#include "ContainerTestNodes.h"
#include "containers/DefendCollectionContainer.h"
#include "containers/UnitContainer.h"
#include "core/tree/NodeTemplateActivator.h"
#include "core/tree/NodeTemplateActivatorCollection.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>

using namespace ZemTree;
using namespace ZemTreeTest;

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
