#pragma once

#include "collections/NotifyUniquePtrCollectionStructure.h"
#include "contacts/AnalogOutputTarget.h"

#include <memory>
#include <sstream>

namespace ZemTree {

// The redirect targets of a test's analog output groups, one per logical group in order, owned; adding,
// removing or changing a target reaches observers as the one structure signal.
//
// Text form: the target texts joined by ";" (not "|" as for contacts, where ";" separates fields); the empty
// collection is the empty text. Reading empties the collection first (a locked one throws std::logic_error with
// the read-only text), then appends target by target with the usual notifications. Every part reads: "" gives
// number 1 without a path, so "2;Analog/Group 3;" is three targets, and "12a" is number 1 without a path.
class AnalogOutputRedirectCollection : public NotifyUniquePtrCollectionStructure<AnalogOutputTarget> {
public:
    AnalogOutputRedirectCollection() = default;

    // A new collection made from this one's text, so only what the text holds is copied: a target with a path
    // loses its number, and a path that begins with a digit does not come back. Throws the plain text
    // "AnalogOutputRedirectCollection clone exception" when the text does not read back.
    std::shared_ptr<AnalogOutputRedirectCollection> clone() const;

    void operator>>(std::ostringstream& stream) const;
    void operator<<(std::istringstream& stream);
};

} // namespace ZemTree
