#pragma once

#include <cstdint>
#include <string>

namespace ZemTree {

// Reports :string:the text for the user, in the current language.
class IDescriptionContainer {
public:
    virtual ~IDescriptionContainer() = default;
    virtual std::string getDescription() const = 0;
};

} // namespace ZemTree
