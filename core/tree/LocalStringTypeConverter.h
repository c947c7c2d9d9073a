#pragma once

#include "core/tree/LocalString.h"

#include <string>

namespace xmlpp {
class Element;
}

namespace ZemTree {

// The XML form of LocalString: an element holding the plain text in the attribute `Text` and one child
// `Value` (attributes `Language` and `Text`) per language with its own text, in key order so that the same
// string always gives the same XML:
//   <Description Text="Voltage"><Value Language="ru" Text="Напряжение"/></Description>
class LocalStringTypeConverter {
public:
    LocalStringTypeConverter() = delete;

    // Creates the child element `name` under `parent`, fills it and returns it.
    static xmlpp::Element* toXmlData(const LocalString& value, xmlpp::Element* parent, const std::string& name);

    // Reads the element made by toXmlData. A missing `Text` means an empty plain text and unknown children are
    // skipped. A null element, or a `Value` without a language or repeating one, is malformed: with
    // `emptyOnError` the result is then an empty string, otherwise std::runtime_error is thrown.
    static LocalString fromXmlData(const xmlpp::Element* element, bool emptyOnError);

    // fromXmlData on the first child element `name` of `parent`; a missing child counts as a null element.
    static LocalString fromXmlChild(const xmlpp::Element* parent, const std::string& name, bool emptyOnError);
};

} // namespace ZemTree
