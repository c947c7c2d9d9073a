#include "core/formula/EmbeddedFormula.h"

namespace ZemTree {

EmbeddedFormula::EmbeddedFormula(const ExtendedTypeInfo& target, const std::string& text)
    : _targetType(target), _formula(text)
{
}

bool EmbeddedFormula::operator==(const EmbeddedFormula& other) const
{
    return _targetType == other._targetType && _formula == other._formula;
}

} // namespace ZemTree
