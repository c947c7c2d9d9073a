#pragma once

#include "LanguageGuard.h"
#include "TemporaryFolder.h"
#include "XmlTestSupport.h"
#include "core/common/XmlInclude.h"
#include "core/tree/Node.h"
#include "core/tree/SerializationMode.h"
#include "core/tree/TreeLocalization.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

// Trees, XML and folders shared by the result unit tests.
namespace ResultUnitTest {

using ZemTreeTest::loadFromString;
using ZemTreeTest::makeMode;
using ZemTreeTest::saveToString;

// A test's shape as far as results go: a root "Test" with a plain section "Results". The section is not locked,
// so its units are saved with their class and a reader makes them through NodeFactory.
struct ResultTree {
    ResultTree() { results = root.add(std::make_unique<ZemTree::Node>("Results")); }

    template <class Unit> Unit* addUnit(std::unique_ptr<Unit> unit) { return results->add(std::move(unit)); }

    template <class Unit> Unit* find(const std::string& id) const
    {
        return dynamic_cast<Unit*>(results->findChild(id));
    }

    ZemTree::Node root{"Test"};
    ZemTree::Node* results = nullptr;
};

// Saves `tree` as a project, reads it into a new tree and checks that this saves the same, without problems.
inline std::unique_ptr<ResultTree> projectRoundTrip(const ResultTree& tree)
{
    std::vector<std::string> problems;
    const ZemTree::SerializationMode mode = makeMode(ZemTree::SerializationMode::User, &problems);
    const std::string first = saveToString(tree.root, mode);
    auto loaded = std::make_unique<ResultTree>();
    loadFromString(loaded->root, first, mode);
    EXPECT_EQ(saveToString(loaded->root, mode), first);
    EXPECT_TRUE(problems.empty());
    return loaded;
}

// The saved form of a ResultTree with `units` in its Results section.
inline std::string treeXml(const std::string& units)
{
    return "<Root><Node Id=\"Test\"><Node Id=\"Results\">" + units + "</Node></Node></Root>";
}

// A unit element of class `className` whose `Value` element carries `valueAttributes` and holds `valueContent`.
inline std::string unitXml(const std::string& id, const std::string& className, const std::string& valueAttributes,
                           const std::string& valueContent)
{
    return "<Node Id=\"" + id + "\" Class=\"" + className + "\"><Value " + valueAttributes + ">" + valueContent
           + "</Value></Node>";
}

inline std::vector<xmlpp::Element*> children(xmlpp::Element* parent, const char* name)
{
    std::vector<xmlpp::Element*> found;
    if (parent != nullptr)
        for (xmlpp::Node* child : parent->get_children(name))
            if (auto* element = dynamic_cast<xmlpp::Element*>(child))
                found.push_back(element);
    return found;
}

inline xmlpp::Element* firstChild(xmlpp::Element* parent, const char* name)
{
    const std::vector<xmlpp::Element*> found = children(parent, name);
    return found.empty() ? nullptr : found.front();
}

// The attribute's text, "<none>" when it is absent, "<no element>" without an element.
inline std::string attribute(const xmlpp::Element* element, const char* name)
{
    if (element == nullptr)
        return "<no element>";
    const xmlpp::Attribute* const found = element->get_attribute(name);
    return found != nullptr ? std::string(found->get_value()) : std::string("<none>");
}

// The text of the element's first text child, "" without one.
inline std::string text(const xmlpp::Element* element)
{
    const xmlpp::TextNode* const node = element != nullptr ? element->get_child_text() : nullptr;
    return node != nullptr ? std::string(node->get_content()) : std::string();
}

using TempFolder = ZemTreeTest::TemporaryFolder;

using ZemTreeTest::LanguageGuard;

} // namespace ResultUnitTest
