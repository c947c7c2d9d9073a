#pragma once

#include <string>

namespace Zem {

// The texts that collections show a user. Collections sit below the tree's localisation, which hands its
// translated texts in through setReadOnlyTextSource when the library loads; until then the English text stands.
class CollectionTexts {
public:
    using Source = const char* (*)();

    CollectionTexts() = delete;

    // The refusal of a change to a read-only collection, in the current language.
    static std::string readOnlyText();
    // Null restores the English text.
    static void setReadOnlyTextSource(Source source);
};

} // namespace Zem
