#pragma once

#include "core/common/XmlInclude.h"
#include "core/tree/Node.h"
#include "core/tree/SerializationMode.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZemTreeTest {

// The XML that `write` adds under an empty root, without the root and the declaration.
template <class Write> std::string writtenXml(Write write)
{
    xmlpp::Document document;
    write(document.create_root_node("Root"));
    const std::string text = document.write_to_string();
    const std::size_t begin = text.find("<Root>");
    const std::size_t end = text.rfind("</Root>");
    if (begin == std::string::npos || end == std::string::npos)
        return std::string();
    return text.substr(begin + 6, end - begin - 6);
}

// A parsed document that keeps its root element alive for the test.
class ParsedXml {
public:
    explicit ParsedXml(const std::string& text) { _parser.parse_memory(text); }
    const xmlpp::Element* root() { return _parser.get_document()->get_root_node(); }

private:
    xmlpp::DomParser _parser;
};

// A mode of `kind` that collects its problems in `problems`.
inline ZemTree::SerializationMode makeMode(std::uint8_t kind, std::vector<std::string>* problems = nullptr)
{
    ZemTree::SerializationMode mode;
    mode.kind = kind;
    mode.problems = problems;
    return mode;
}

// Saves `node` under a wrapper element `Root` and returns the document's text.
inline std::string saveToString(const ZemTree::Node& node, const ZemTree::SerializationMode& mode)
{
    xmlpp::Document document;
    node.getXml(document.create_root_node("Root"), mode);
    return document.write_to_string();
}

// Parses `xml` and reads the first node element below the document's root into `node`.
inline void loadFromString(ZemTree::Node& node, const std::string& xml, const ZemTree::SerializationMode& mode)
{
    xmlpp::DomParser parser;
    parser.parse_memory(xml);
    xmlpp::Element* const root = parser.get_document()->get_root_node();
    for (xmlpp::Node* child : root->get_children(ZemTree::Node::XmlElementName)) {
        if (auto* element = dynamic_cast<xmlpp::Element*>(child)) {
            node.setXml(element, mode);
            return;
        }
    }
    throw std::runtime_error("no node element in " + xml);
}

} // namespace ZemTreeTest
