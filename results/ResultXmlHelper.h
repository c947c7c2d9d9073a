#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace xmlpp {
class Element;
}

namespace ZemTree {

class NumericAssessment;
class StringAssessment;

// The pieces that the XML of the four result converters shares: the saved assessments and the lists of raw
// texts. Only setting assessments survive a save; the readers say false for data that must not be read on.
class ResultXmlHelper {
public:
    ResultXmlHelper() = delete;

    // Whether the element has at least one child element; an element without one is an empty result.
    static bool hasChildElement(const xmlpp::Element* element);
    // The text of the element's first text child; false when it has none.
    static bool tryGetText(const xmlpp::Element* element, std::string& text);

    // Attribute Assessment="Setting" and the children Setting and Tolerance, for a NumericSettingAssessment only.
    static void writeNumericAssessment(const NumericAssessment* assessment, xmlpp::Element* element);
    // Reads the assessment of an element whose attribute Assessment is "Setting"; null when Setting or Tolerance
    // is missing. Returns false for a Setting or Tolerance without text, or with a text that does not convert.
    static bool readNumericSettingAssessment(const xmlpp::Element* element,
                                             std::shared_ptr<NumericAssessment>& assessment);

    // Attributes Assessment="Setting" and Valid, for a StringSettingAssessment only.
    static void writeStringAssessment(const StringAssessment* assessment, xmlpp::Element* element);
    // Null unless Assessment is "Setting"; false when it is but Valid is missing.
    static bool readStringAssessment(const xmlpp::Element* element, std::shared_ptr<StringAssessment>& assessment);

    // A child Values holding one Value per text.
    static void writeValues(const std::vector<std::string>& texts, xmlpp::Element* element);
    // The texts of all element children of the first child Values that have text; false without Values.
    static bool readValues(const xmlpp::Element* element, std::vector<std::string>& texts);

    // A child Items holding one Item (attribute Name) per key, each with one Value per text.
    template <class Map, class TextsOf>
    static void writeItems(const Map& items, TextsOf textsOf, xmlpp::Element* element)
    {
        xmlpp::Element* itemsElement = _addItems(element);
        for (const auto& entry : items)
            _addItem(itemsElement, entry.first, textsOf(entry.second));
    }
    // The texts per Name of the first child Items; false without Items or for an item without Name. Of two items
    // of one name the first counts.
    static bool readItems(const xmlpp::Element* element, std::map<std::string, std::vector<std::string>>& items);

private:
    static xmlpp::Element* _addItems(xmlpp::Element* element);
    static void _addItem(xmlpp::Element* items, const std::string& name, const std::vector<std::string>& texts);
    static void _addValueChildren(const std::vector<std::string>& texts, xmlpp::Element* element);
    static std::vector<std::string> _readTextChildren(const xmlpp::Element* element);
};

} // namespace ZemTree
