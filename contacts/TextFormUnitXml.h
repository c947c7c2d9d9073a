#pragma once

#include "core/common/ConvertionHelper.h"
#include "core/common/ScopedConnection.h"
#include "core/common/XmlInclude.h"

#include <stdexcept>
#include <string>

namespace ZemTree {

// What the units of contacts and redirections share: their data is a shared pointer to an object with a stream
// text form, kept as the text of the unit's `Value` element, and they judge it again when the hardware changes.
namespace TextFormUnitXml {

// The object of the element's text; null for no text. Throws std::runtime_error "<unitName> data parse error"
// for a text the object refuses.
template <class Data> Data read(const xmlpp::Element* element, const char* unitName)
{
    const xmlpp::TextNode* const textNode = element->get_child_text();
    if (textNode == nullptr)
        return nullptr;
    const std::string text = textNode->get_content();
    if (text.empty())
        return nullptr;
    Data data;
    if (!Zem::tryConvert<Data, true, true>(text, data))
        throw std::runtime_error(std::string(unitName) + " data parse error");
    return data;
}

// Adds the object's text to the element; nothing for null.
template <class Data> void write(const Data& data, xmlpp::Element* element)
{
    if (data)
        element->add_child_text(Zem::convertToString<Data, true, true>(data));
}

// Coerces `data` against new hardware and stores the result through `store`. The coercion may change the object
// in place, which announces itself through the object's structure signal. Returns whether the change was
// announced: when it was not, the unit renews its value out itself, as it is judged against the new hardware.
template <class Data, class Coerce, class Store> bool coerceAnnounced(const Data& data, Coerce coerce, Store store)
{
    bool isAnnounced = false;
    Zem::ScopedConnection probe;
    if (data)
        probe = data->getSignalStructureChanged().connect([&isAnnounced] { isAnnounced = true; });
    const Data coerced = coerce(data);
    isAnnounced = isAnnounced || coerced != data;
    store(coerced);
    return isAnnounced;
}

} // namespace TextFormUnitXml

} // namespace ZemTree
