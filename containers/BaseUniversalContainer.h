#pragma once

#include "containers/TestableContainer.h"

#include <string>

namespace ZemTree {

// The bare item: a testable container with its own class name and no fixed sections.
class BaseUniversalContainer : public TestableContainer {
public:
    BaseUniversalContainer();
    explicit BaseUniversalContainer(const std::string& id);
    BaseUniversalContainer(const std::string& id, const LocalString& description, const LocalString& secondText);
};

} // namespace ZemTree
