#pragma once

#include "collections/NotifyUniquePtrCollectionStructure.h"
#include "contacts/ContactElement.h"

#include <memory>
#include <sstream>

namespace ZemTree {

// The ordered contact elements of a test, owned; adding, removing or changing any element reaches observers as
// the one structure signal.
//
// Text form: the element texts joined by "|", nothing around them: "1;OFF;0;0|!2;SC;0.1;0.25"; the empty
// collection is the empty text. Reading empties the collection first (a locked one throws std::logic_error with
// the read-only text), then appends element by element with the usual notifications. A bad element, an empty
// one from a trailing "|" included, sets the stream's badbit and stops the reading; the elements before it stay.
class ContactCollection : public NotifyUniquePtrCollectionStructure<ContactElement> {
public:
    ContactCollection() = default;

    // A new collection made from this one's text, so only what the text holds is copied: no subscribers, and
    // times only to the text's precision. Throws the plain text "ContactCollection clone exception" when the text
    // does not read back, e.g. for a path or mode with a separator in it.
    std::shared_ptr<ContactCollection> clone() const;

    void operator>>(std::ostringstream& stream) const;
    void operator<<(std::istringstream& stream);
};

} // namespace ZemTree
