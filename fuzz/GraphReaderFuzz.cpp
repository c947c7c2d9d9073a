// Feeds arbitrary documents to the reader of multi graph results, with the managers that the library registers.
// Input that is no XML is ignored; whatever the reader accepts must write XML that it accepts again, and once
// written a result keeps its XML through further reading and writing. A broken promise stops the run with a trap.

#include "core/common/XmlInclude.h"
#include "results/graph/ResultMultiGraph.h"
#include "results/graph/ResultMultiGraphTypeConverter.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <string>

namespace {

void check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

// Writes the result into a fresh document; gives the document's text.
std::string write(const ZemTree::ResultMultiGraph& result, xmlpp::Document& document)
{
    xmlpp::Element* root = document.create_root_node("Root");
    ZemTree::ResultMultiGraphTypeConverter::toXmlData(result, root);
    return document.write_to_string();
}

const xmlpp::Element* writtenElement(xmlpp::Document& document)
{
    const xmlpp::Node::NodeList children = document.get_root_node()->get_children();
    check(children.size() == 1);
    const auto* element = dynamic_cast<const xmlpp::Element*>(children.front());
    check(element != nullptr);
    return element;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    xmlpp::DomParser parser;
    try {
        parser.parse_memory_raw(data, size);
    }
    catch (const std::exception&) {
        return 0;
    }
    const xmlpp::Document* document = parser.get_document();
    if (document == nullptr || document->get_root_node() == nullptr)
        return 0;

    std::shared_ptr<ZemTree::ResultMultiGraph> result;
    if (!ZemTree::ResultMultiGraphTypeConverter::fromXmlData(document->get_root_node(), result))
        return 0;
    check(result != nullptr);

    xmlpp::Document first;
    write(*result, first);
    std::shared_ptr<ZemTree::ResultMultiGraph> second;
    check(ZemTree::ResultMultiGraphTypeConverter::fromXmlData(writtenElement(first), second));
    check(second != nullptr);
    check(second->_items.size() == result->_items.size());
    check((second->getManager() == nullptr) == (result->getManager() == nullptr));
    check(second->isEmpty() == result->isEmpty());

    // Numbers lose their surplus digits in the first writing only; from then on the XML and the state stay.
    xmlpp::Document secondDocument;
    const std::string secondText = write(*second, secondDocument);
    std::shared_ptr<ZemTree::ResultMultiGraph> third;
    check(ZemTree::ResultMultiGraphTypeConverter::fromXmlData(writtenElement(secondDocument), third));
    xmlpp::Document thirdDocument;
    check(write(*third, thirdDocument) == secondText);
    check(third->getState() == second->getState());
    return 0;
}
