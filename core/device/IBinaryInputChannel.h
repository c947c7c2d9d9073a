#pragma once

#include "core/device/IChannel.h"

namespace ZemRelay {

// A binary input of the test set: it senses a contact of the relay, so the relay side drives it.
class IBinaryInputChannel : public virtual IChannel {
public:
    // Closes (true) or opens (false) the sensed contact. Safe from any thread; see the channel for who emits.
    virtual void drive(bool state) = 0;
};

} // namespace ZemRelay
