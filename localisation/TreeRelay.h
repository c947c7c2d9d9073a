#pragma once

#include <string>

namespace lng {

// This library's own two-language texts, chosen by the global lng::language (0 English, 1 Russian).
class TreeRelay {
public:
    TreeRelay() = delete;

    // The text of `key` in the current language. An unknown key is no error: the characters of `key` itself
    // come back, so the pointer is valid only while `key` lives and callers copy it at once.
    // Keeps no state: any thread may call it.
    static const char* get(const std::string& key);
};

} // namespace lng
