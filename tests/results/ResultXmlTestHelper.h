#pragma once

#include "LanguageGuard.h"
#include "XmlTestSupport.h"
#include "core/tree/Deviation.h"
#include "core/tree/TreeLocalization.h"

#include <ostream>
#include <string>

namespace ZemTree {

// Failures show a deviation as its display text.
inline void PrintTo(const Deviation& deviation, std::ostream* stream)
{
    *stream << "Deviation(" << deviation.getDisplayValue() << ")";
}

} // namespace ZemTree
