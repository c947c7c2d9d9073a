#pragma once

#include "core/common/Point.h"

#include <memory>
#include <string>
#include <vector>

namespace xmlpp {
class Element;
}

namespace ZemTree {

class ResultMultiGraph;

// XML of a multi graph result: element "ResultMultiGraph"; a child "Manager" whose attribute Type names the
// manager's type in GraphManagerFactory and which holds the manager's own settings; then "Items" with one "Item"
// per curve (attribute Name) holding one "Value" with the point list "1;0.5|2;0.25". The state, the tables and the
// figures are not stored: reading rebuilds them from the points and the manager.
class ResultMultiGraphTypeConverter {
public:
    ResultMultiGraphTypeConverter() = delete;

    // Adds the result's element under `parent`; an empty result gives a bare element, a result without a manager
    // one without "Manager".
    static void toXmlData(const ResultMultiGraph& result, xmlpp::Element* parent);
    // Returns false, leaving `result`, when the element is null or has another name, or when "Manager" has no
    // Type. An element without child elements reads as an empty result. A Type that the factory does not know
    // gives a result without a manager, so every curve with points is Error. An "Item" without Name is skipped,
    // of two items of one name the first counts, and a malformed point of a list is skipped.
    static bool fromXmlData(const xmlpp::Element* element, std::shared_ptr<ResultMultiGraph>& result);

    // The points as x, ";", y, joined by "|", numbers as Zem::convertToString<double, true>(value, 2) writes them.
    static std::string pointsToText(const std::vector<Zem::Point>& points);
    // The pieces between "|" that are two numbers separated by one ";"; every other piece is skipped.
    static std::vector<Zem::Point> pointsFromText(const std::string& text);
};

} // namespace ZemTree
