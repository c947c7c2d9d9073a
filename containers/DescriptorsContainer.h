#pragma once

#include "containers/SettingsContainer.h"

#include <string>

namespace ZemTree {

// The `Descriptors` section of a root item: free string descriptors that the user may add even after the item
// is fixed.
class DescriptorsContainer : public SettingsContainer {
public:
    DescriptorsContainer();
    explicit DescriptorsContainer(const std::string& id);
    DescriptorsContainer(const std::string& id, const LocalString& description, const LocalString& secondText);

    // Only string units.
    bool canContains(Node* item) override;
};

} // namespace ZemTree
