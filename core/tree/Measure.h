#pragma once

#include <string>

namespace ZemTree {

// A unit of measurement. Measures are shared instances (see Measures) compared by address; the key is the
// stable name under which a measure is saved.
class Measure {
public:
    Measure(const std::string& key, const std::string& english, const std::string& russian);
    Measure(const Measure&) = delete;
    Measure& operator=(const Measure&) = delete;

    const std::string& getKey() const { return _key; }
    // The short name for display ("Ohm", "s"), in the current language.
    const std::string& getDescription() const;

private:
    std::string _key;
    std::string _descriptions[2];
};

} // namespace ZemTree
