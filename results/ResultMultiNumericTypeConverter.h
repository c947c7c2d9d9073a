#pragma once

#include <memory>

namespace xmlpp {
class Element;
}

namespace ZemTree {

class ResultMultiNumeric;

// XML of a multi numeric result: element "ResultMultiNumeric"; the assessment as for "ResultNumeric"; then
// "Items" with one "Item" per key (attribute Name) holding one "Value" per raw text. The state is not stored.
class ResultMultiNumericTypeConverter {
public:
    ResultMultiNumericTypeConverter() = delete;

    // Adds the result's element under `parent`; an empty result gives a bare element.
    static void toXmlData(const ResultMultiNumeric& result, xmlpp::Element* parent);
    // Returns false, leaving `result`, when the element is null or has another name, when "Items" is missing, an
    // item has no Name, or Setting or Tolerance are present but bad. A missing Assessment means no assessment. Of
    // two items of one name the first counts. An element without child elements reads as an empty result.
    static bool fromXmlData(const xmlpp::Element* element, std::shared_ptr<ResultMultiNumeric>& result);
};

} // namespace ZemTree
