#include "containers/ParametersContainer.h"

namespace ZemTree {

ParametersContainer::ParametersContainer() : ParametersContainer("ParametersContainer") {}

ParametersContainer::ParametersContainer(const std::string& id)
    : ParametersContainer(id, LocalString::Empty(), LocalString::Empty())
{
}

ParametersContainer::ParametersContainer(const std::string& id, const LocalString& description,
                                         const LocalString& secondText)
    : UnitContainer(id, description, secondText)
{
    _initHierarchicalMode(ContainerHierarchicalMode::Parameters);
}

} // namespace ZemTree
