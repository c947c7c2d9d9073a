#pragma once

#include <cstddef>

namespace ZemDriver {

// A group of channels that the test set switches together.
class IChannelGroup {
public:
    virtual ~IChannelGroup() = default;
    virtual std::size_t getChannelCount() const = 0;
};

} // namespace ZemDriver
