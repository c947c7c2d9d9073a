#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ZemTree {

// How a tree is saved or read. `System` carries a template's structure, `User` a project with its state and
// results; other kinds write neither kind's extras. Problems met while reading go to `problems` when it is set.
struct SerializationMode {
    enum Kind : std::uint8_t { System = 0, User = 1 };

    std::uint8_t kind = System;
    bool flag1 = false;
    bool flag2 = false;
    std::vector<std::string>* problems = nullptr;
};

} // namespace ZemTree
