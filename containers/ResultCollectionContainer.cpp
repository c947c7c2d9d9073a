#include "containers/ResultCollectionContainer.h"

#include "core/common/XmlInclude.h"

namespace ZemTree {

ResultCollectionContainer::ResultCollectionContainer() : ResultCollectionContainer("ResultCollectionContainer") {}

ResultCollectionContainer::ResultCollectionContainer(const std::string& id)
    : ResultCollectionContainer(id, LocalString::Empty(), LocalString::Empty())
{
}

ResultCollectionContainer::ResultCollectionContainer(const std::string& id, const LocalString& description,
                                                     const LocalString& secondText)
    : UnitContainer(id, description, secondText)
{
    _initHierarchicalMode(ContainerHierarchicalMode::Parameters);
}

void ResultCollectionContainer::_getDisplayXmlCurrentMode(xmlpp::Element* element) const
{
    element->set_attribute("Mode", "Results");
}

} // namespace ZemTree
