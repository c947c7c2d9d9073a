#pragma once

#include "core/common/Point.h"
#include "core/common/XmlInclude.h"
#include "core/tree/TreeLocalization.h"

#include <cmath>
#include <ostream>
#include <string>

namespace Zem {

// Failures show points as numbers.
inline void PrintTo(const Point& point, std::ostream* stream)
{
    *stream << "(" << point.x << ", " << point.y << ")";
}

inline void PrintTo(const PointF& point, std::ostream* stream)
{
    *stream << "(" << point.x << ", " << point.y << ")";
}

} // namespace Zem

namespace ZemTreeTest {

// The XML that `write` adds under an empty root, without the root and the declaration.
template <class Write> std::string writtenXml(Write write)
{
    xmlpp::Document document;
    xmlpp::Element* root = document.create_root_node("Root");
    write(root);
    const std::string text = document.write_to_string();
    const std::string open = "<Root>";
    const std::size_t begin = text.find(open);
    const std::size_t end = text.rfind("</Root>");
    if (begin == std::string::npos || end == std::string::npos)
        return std::string();
    return text.substr(begin + open.size(), end - begin - open.size());
}

// A parsed document that keeps its root element alive for the test.
class ParsedXml {
public:
    explicit ParsedXml(const std::string& text) { _parser.parse_memory(text); }
    const xmlpp::Element* root() { return _parser.get_document()->get_root_node(); }

private:
    xmlpp::DomParser _parser;
};

// Equal, or both NaN.
inline bool sameNumber(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || a == b;
}

// Sets the interface language for one test and puts English back.
class LanguageGuard {
public:
    explicit LanguageGuard(int language) : _saved(lng::language) { lng::language = language; }
    ~LanguageGuard() { lng::language = _saved; }
    LanguageGuard(const LanguageGuard&) = delete;
    LanguageGuard& operator=(const LanguageGuard&) = delete;

private:
    int _saved;
};

} // namespace ZemTreeTest
