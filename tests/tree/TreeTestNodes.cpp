#include "TreeTestNodes.h"

#include "core/tree/NodeFactory.h"

#include <stdexcept>

namespace TreeTest {

namespace {

[[maybe_unused]] const bool groupRegistered = ZemTree::NodeFactory::registerType<TestGroup>();
[[maybe_unused]] const bool itemRegistered = ZemTree::NodeFactory::registerType<TestItem>();
[[maybe_unused]] const bool forbiddenRegistered = ZemTree::NodeFactory::registerType<TestForbidden>();

} // namespace

bool TestGroup::canContains(ZemTree::Node* item)
{
    return dynamic_cast<TestForbidden*>(item) == nullptr;
}

std::string saveToString(const ZemTree::Node& node, const ZemTree::SerializationMode& mode)
{
    xmlpp::Document document;
    xmlpp::Element* root = document.create_root_node("Tree");
    node.getXml(root, mode);
    return document.write_to_string();
}

void loadFromString(ZemTree::Node& node, const std::string& text, const ZemTree::SerializationMode& mode)
{
    xmlpp::DomParser parser;
    parser.parse_memory(text);
    xmlpp::Element* root = parser.get_document()->get_root_node();
    for (xmlpp::Node* child : root->get_children(ZemTree::Node::XmlElementName)) {
        if (auto* element = dynamic_cast<xmlpp::Element*>(child)) {
            node.setXml(element, mode);
            return;
        }
    }
    throw std::runtime_error("no node element in the document");
}

} // namespace TreeTest
