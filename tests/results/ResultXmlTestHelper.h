#pragma once

#include "LanguageGuard.h"

#include "core/common/XmlInclude.h"
#include "core/tree/Deviation.h"
#include "core/tree/TreeLocalization.h"

#include <ostream>
#include <string>

namespace ZemTree {

// Failures show a deviation as its display text.
inline void PrintTo(const Deviation& deviation, std::ostream* stream)
{
    *stream << "Deviation(" << deviation.getDisplayValue() << ")";
}

} // namespace ZemTree

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

} // namespace ZemTreeTest
