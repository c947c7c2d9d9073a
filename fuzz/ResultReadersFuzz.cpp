// Feeds arbitrary documents to the four result readers. Input that is no XML is ignored; whatever the readers
// make of the rest must not crash, and what they accept must write XML that reads back with the same state.
// A broken promise stops the run with a trap.

#include "core/common/XmlInclude.h"
#include "results/ResultMultiNumeric.h"
#include "results/ResultMultiNumericTypeConverter.h"
#include "results/ResultMultiString.h"
#include "results/ResultMultiStringTypeConverter.h"
#include "results/ResultNumeric.h"
#include "results/ResultNumericTypeConverter.h"
#include "results/ResultString.h"
#include "results/ResultStringTypeConverter.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>

namespace {

void check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

// Reads the element with one converter; when it is accepted, writes the result into a fresh document and reads
// that again. `mustReadBack` says whether the converter promises to accept its own output for this result, and
// `keepsState` whether the state must then be the same.
template <class Converter, class Result, class MustReadBack, class KeepsState>
void readWriteRead(const xmlpp::Element* element, MustReadBack mustReadBack, KeepsState keepsState)
{
    std::shared_ptr<Result> result;
    if (!Converter::fromXmlData(element, result))
        return;
    check(result != nullptr);
    xmlpp::Document document;
    xmlpp::Element* root = document.create_root_node("Root");
    Converter::toXmlData(*result, root);
    const xmlpp::Node::NodeList children = root->get_children();
    check(children.size() == 1);
    const auto* written = dynamic_cast<const xmlpp::Element*>(children.front());
    check(written != nullptr);
    std::shared_ptr<Result> back;
    const bool isRead = Converter::fromXmlData(written, back);
    if (mustReadBack(*result))
        check(isRead);
    if (isRead && keepsState(*result))
        check(back->getState() == result->getState());
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
    if (document == nullptr)
        return 0;
    const xmlpp::Element* element = document->get_root_node();
    if (element == nullptr)
        return 0;

    const auto always = [](const auto&) { return true; };
    // A single numeric result without a setting assessment is written without the attribute that its reader
    // requires. A setting is written with at most 13 digits behind the point, so a numeric verdict may change.
    readWriteRead<ZemTree::ResultNumericTypeConverter, ZemTree::ResultNumeric>(
        element,
        [](const ZemTree::ResultNumeric& result) { return result.isEmpty() || result.getAssessment() != nullptr; },
        [](const ZemTree::ResultNumeric& result) { return result.getAssessment() == nullptr; });
    readWriteRead<ZemTree::ResultStringTypeConverter, ZemTree::ResultString>(element, always, always);
    readWriteRead<ZemTree::ResultMultiNumericTypeConverter, ZemTree::ResultMultiNumeric>(
        element, always, [](const ZemTree::ResultMultiNumeric& result) { return result.getAssessment() == nullptr; });
    readWriteRead<ZemTree::ResultMultiStringTypeConverter, ZemTree::ResultMultiString>(element, always, always);
    return 0;
}
