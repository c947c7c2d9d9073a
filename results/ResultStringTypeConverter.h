#pragma once

#include <memory>

namespace xmlpp {
class Element;
}

namespace ZemTree {

class ResultString;

// XML of a string result: element "ResultString"; with a setting assessment the attributes Assessment="Setting"
// and Valid (the valid text); then "Values" with one "Value" per raw text. The state is not stored.
class ResultStringTypeConverter {
public:
    ResultStringTypeConverter() = delete;

    // Adds the result's element under `parent`; an empty result gives a bare element.
    static void toXmlData(const ResultString& result, xmlpp::Element* parent);
    // Returns false, leaving `result`, when the element is null or has another name, when "Values" is missing, or
    // when Assessment="Setting" comes without Valid. An element without child elements reads as an empty result.
    static bool fromXmlData(const xmlpp::Element* element, std::shared_ptr<ResultString>& result);
};

} // namespace ZemTree
