#include "containers/UniversalGeneralContainer.h"

#include "ContainerTestNodes.h"
#include "containers/DescriptorsContainer.h"
#include "containers/SpecialModuleInfo.h"
#include "core/tree/StringUnit.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace ZemTree;
using namespace ZemTreeTest;

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
