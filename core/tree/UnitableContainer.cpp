#include "core/tree/UnitableContainer.h"

#include <typeinfo>

namespace ZemTree {

UnitableContainer::UnitableContainer(const std::string& id, const LocalString& description,
                                     const LocalString& secondText)
    : Unitable(id, description, secondText)
{
}

ExtendedTypeInfo UnitableContainer::getExtendedTypeInfo() const
{
    return ExtendedTypeInfo::fromType(typeid(*this));
}

} // namespace ZemTree
