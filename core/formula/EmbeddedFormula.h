#pragma once

#include "core/tree/ExtendedTypeInfo.h"

#include <string>

namespace ZemTree {

// A formula that waits for a node of a given type: once such a node is reachable from the unit that holds it,
// the formula, with its references taken relative to that node, becomes the unit's default (EmbeddedDispatcher).
// A plain value; the default one has an undefined target and asks for nothing.
class EmbeddedFormula {
public:
    EmbeddedFormula() = default;
    EmbeddedFormula(const ExtendedTypeInfo& target, const std::string& text);

    const std::string& getFormula() const { return _formula; }
    const ExtendedTypeInfo& getTargetType() const { return _targetType; }

    bool operator==(const EmbeddedFormula& other) const;
    bool operator!=(const EmbeddedFormula& other) const { return !(*this == other); }

private:
    ExtendedTypeInfo _targetType;
    std::string _formula;
};

} // namespace ZemTree
