#pragma once

#include "core/tree/TreeLocalization.h"

namespace ZemTreeTest {

// Sets the interface language for one test and puts the former one back.
class LanguageGuard {
public:
    explicit LanguageGuard(int language) : _saved(lng::language) { lng::language = language; }
    ~LanguageGuard() { lng::language = _saved; }
    LanguageGuard(const LanguageGuard&) = delete;
    LanguageGuard& operator=(const LanguageGuard&) = delete;

private:
    int _saved;
};

} // namespace ZemTreeTest
