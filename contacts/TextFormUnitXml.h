#pragma once

#include "core/common/ConvertionHelper.h"
#include "core/common/ScopedConnection.h"
#include "core/common/XmlInclude.h"

#include <sigc++/signal.h>

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

// The one reaction of the contact, collection and redirect units to a change of the hardware above them: the data
// is coerced against the new hardware and stored, then the value out is renewed, then `hardwareChanged` fires.
// The value out is renewed on every hardware change, also when no path of the data changed and no formula is the
// source: a value out judged against the former hardware may be stale (a channel that is gone, or back), and a
// view that follows the unit must see it judged again before it hears of the new hardware. A change that the data
// announces renews it already, unless a formula is the source, which the data's own signal does not reach.
template <class Data, class Coerce, class Store, class Renew>
void followHardware(const Data& data, bool isFormulaSource, Coerce coerce, Store store, Renew renewValueOut,
                    sigc::signal<void>& hardwareChanged)
{
    if (!coerceAnnounced(data, coerce, store) || isFormulaSource)
        renewValueOut();
    hardwareChanged.emit();
}

} // namespace TextFormUnitXml

} // namespace ZemTree
