#pragma once

#include <string>

namespace lng {

// The current language of the user interface: 0 English, 1 Russian. Set by the host at start-up.
extern int language;

// The tree core's own two-language texts.
class Tree {
public:
    Tree() = delete;
    // The text of `key` in the current language, or the characters of `key` itself when it is unknown: that
    // result points into the argument, so a caller copies it before the key goes away.
    static const char* get(const std::string& key);
};

} // namespace lng
