#pragma once

#include <memory>

namespace xmlpp {
class Element;
}

namespace ZemTree {

class ResultNumeric;

// XML of a numeric result: element "ResultNumeric"; with a setting assessment the attribute Assessment="Setting"
// and the children "Setting" (the setting) and "Tolerance" (ToleranceReducedTypeConverter text); then "Values"
// with one "Value" per raw text. No state, message or deviation is stored: reading rebuilds the result from the
// texts and the assessment. Any other assessment is not saved.
class ResultNumericTypeConverter {
public:
    ResultNumericTypeConverter() = delete;

    // Adds the result's element under `parent`; an empty result gives a bare element.
    static void toXmlData(const ResultNumeric& result, xmlpp::Element* parent);
    // Returns false, leaving `result`, when the element is null or has another name, when a non-empty element has
    // no attribute Assessment (such input is not valid, although a result without a setting assessment is
    // written that way), when "Values" is missing, or when Setting or Tolerance are present but bad. An element
    // without child elements reads as an empty result. Texts that are no numbers give a result in Error.
    static bool fromXmlData(const xmlpp::Element* element, std::shared_ptr<ResultNumeric>& result);
};

} // namespace ZemTree
