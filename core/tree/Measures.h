#pragma once

#include <string>
#include <vector>

namespace ZemTree {

class Measure;

// The known measures. Each is one shared instance that lives for the whole program, so a Measure* may be
// stored and compared freely.
class Measures {
public:
    Measures() = delete;

    static Measure* None();
    static Measure* Ohm();
    static Measure* Gradus();
    static Measure* Second();
    static Measure* Volt();
    static Measure* Ampere();
    static Measure* Hertz();
    static Measure* Percent();

    // Every instance above, None first.
    static const std::vector<Measure*>& all();
    // The measure whose key is `key` (exact match), or null.
    static Measure* find(const std::string& key);
};

} // namespace ZemTree
