// Feeds arbitrary texts to the text readers of contacts and analog redirects: one contact, one contact element, a
// contact collection and a redirect collection. The first byte of an input picks the reader; the rest is the
// text. The only exception a reader may throw is the std::out_of_range of an element with an empty contact name.
// Whatever a reader accepts must write a text that reads back to the same text, and a refused element must stay
// as it was. A broken promise stops the run with a trap.

#include "contacts/AnalogOutputRedirectCollection.h"
#include "contacts/Contact.h"
#include "contacts/ContactCollection.h"
#include "contacts/ContactElement.h"
#include "contacts/ContactMode.h"

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

void check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

template <class T> std::string textOf(const T& object)
{
    std::ostringstream stream;
    object >> stream;
    return stream.str();
}

// Reads `text` into `object`; true when the stream stayed good.
template <class T> bool readInto(T& object, const std::string& text)
{
    std::istringstream stream(text);
    object << stream;
    return !stream.bad() && (text.empty() || !stream.fail());
}

// Whether an element text has the one shape whose reading throws: four fields and an empty contact name.
bool hasEmptyContactName(const std::string& text)
{
    const std::size_t end = text.find(';');
    return end == 0 || (end == 1 && text[0] == '!');
}

void fuzzContact(const std::string& text)
{
    ZemTree::Contact contact(5, false);
    check(readInto(contact, text));
    const std::string written = textOf(contact);
    ZemTree::Contact again(7, true);
    check(readInto(again, written));
    check(textOf(again) == written);
    check(again.getNumber() == contact.getNumber() && again.getIsNormalOpen() == contact.getIsNormalOpen()
          && again.getPath() == contact.getPath());
}

void fuzzElement(const std::string& text)
{
    ZemTree::ContactElement element("Old", false, ZemTree::ContactMode::Pause, 5.0, 6.0);
    const std::string before = textOf(element);
    bool isGood = false;
    try {
        isGood = readInto(element, text);
    }
    catch (const std::out_of_range&) {
        check(hasEmptyContactName(text));
        check(textOf(element) == before);
        return;
    }
    if (!isGood) {
        check(textOf(element) == before);
        return;
    }
    const std::string written = textOf(element);
    ZemTree::ContactElement again(1, true, ZemTree::ContactMode::OFF, 0.0, 0.0);
    check(readInto(again, written));
    check(textOf(again) == written);
}

void fuzzContactCollection(const std::string& text)
{
    ZemTree::ContactCollection collection;
    bool isGood = false;
    try {
        isGood = readInto(collection, text);
    }
    catch (const std::out_of_range&) {
        return;
    }
    if (!isGood)
        return;
    const std::string written = textOf(collection);
    ZemTree::ContactCollection again;
    check(readInto(again, written));
    check(textOf(again) == written);
    check(again.size() == collection.size());
    check(textOf(*collection.clone()) == written);
}

void fuzzRedirectCollection(const std::string& text)
{
    ZemTree::AnalogOutputRedirectCollection collection;
    check(readInto(collection, text));
    const std::string written = textOf(collection);
    ZemTree::AnalogOutputRedirectCollection again;
    check(readInto(again, written));
    check(textOf(again) == written);
    check(textOf(*collection.clone()) == written);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    switch (data[0] % 4) {
    case 0:
        fuzzContact(text);
        break;
    case 1:
        fuzzElement(text);
        break;
    case 2:
        fuzzContactCollection(text);
        break;
    default:
        fuzzRedirectCollection(text);
        break;
    }
    return 0;
}
