#include "containers/BaseUniversalContainer.h"

namespace ZemTree {

BaseUniversalContainer::BaseUniversalContainer() : BaseUniversalContainer("BaseUniversalContainer") {}

BaseUniversalContainer::BaseUniversalContainer(const std::string& id)
    : BaseUniversalContainer(id, LocalString::Empty(), LocalString::Empty())
{
}

BaseUniversalContainer::BaseUniversalContainer(const std::string& id, const LocalString& description,
                                               const LocalString& secondText)
    : TestableContainer(id, description, secondText)
{
}

} // namespace ZemTree
