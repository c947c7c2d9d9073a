#pragma once

#include "core/device/IChannel.h"

namespace ZemRelay {

// A binary output of the test set: a contact that the test closes or opens towards an input of the relay.
class IBinaryOutputChannel : public virtual IChannel {
public:
    // Closes (true) or opens (false) the output. Safe from any thread; see the channel for who emits.
    virtual void setState(bool state) = 0;
};

} // namespace ZemRelay
