#pragma once

#include <cstddef>

namespace ZemRelay {

// One channel of the test set as the relay under test is wired to it.
class IChannel {
public:
    virtual ~IChannel() = default;
    // The 1-based place of the channel in its group.
    virtual std::size_t getChannelNumber() const = 0;
};

} // namespace ZemRelay
