#include "containers/DescriptorsContainer.h"

#include "core/tree/StringUnit.h"

namespace ZemTree {

DescriptorsContainer::DescriptorsContainer() : DescriptorsContainer("DescriptorsContainer") {}

DescriptorsContainer::DescriptorsContainer(const std::string& id)
    : DescriptorsContainer(id, LocalString::Empty(), LocalString::Empty())
{
}

DescriptorsContainer::DescriptorsContainer(const std::string& id, const LocalString& description,
                                           const LocalString& secondText)
    : SettingsContainer(id, description, secondText)
{
}

bool DescriptorsContainer::canContains(Node* item)
{
    return item != nullptr && dynamic_cast<StringUnit*>(item) != nullptr;
}

} // namespace ZemTree
