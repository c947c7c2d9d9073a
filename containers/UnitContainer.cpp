#include "containers/UnitContainer.h"

#include "core/tree/ActionUnit.h"
#include "core/tree/SeparateUnit.h"
#include "core/tree/StringUnit.h"
#include "values/IUnit.h"

namespace ZemTree {

UnitContainer::UnitContainer() : UnitContainer("UnitContainer") {}

UnitContainer::UnitContainer(const std::string& id) : UnitContainer(id, LocalString::Empty(), LocalString::Empty()) {}

UnitContainer::UnitContainer(const std::string& id, const LocalString& description, const LocalString& secondText)
    : UnitableStructureContainer(id, description, secondText)
{
}

bool UnitContainer::canContains(Node* item)
{
    if (item == nullptr)
        return false;
    return dynamic_cast<IUnit*>(item) != nullptr || dynamic_cast<ActionUnit*>(item) != nullptr
           || dynamic_cast<SeparateUnit*>(item) != nullptr || dynamic_cast<StringUnit*>(item) != nullptr;
}

} // namespace ZemTree
