#pragma once

#include <memory>

namespace xmlpp {
class Element;
}

namespace ZemTree {

class ResultMultiString;

// XML of a multi string result: element "ResultMultiString"; the assessment as for "ResultString"; then "Items"
// with one "Item" per key (attribute Name) holding one "Value" per raw text. The state is not stored.
class ResultMultiStringTypeConverter {
public:
    ResultMultiStringTypeConverter() = delete;

    // Adds the result's element under `parent`; an empty result gives a bare element.
    static void toXmlData(const ResultMultiString& result, xmlpp::Element* parent);
    // Returns false, leaving `result`, when the element is null or has another name, when "Items" is missing, an
    // item has no Name, or Assessment="Setting" comes without Valid. Of two items of one name the first counts.
    // An element without child elements reads as an empty result.
    static bool fromXmlData(const xmlpp::Element* element, std::shared_ptr<ResultMultiString>& result);
};

} // namespace ZemTree
