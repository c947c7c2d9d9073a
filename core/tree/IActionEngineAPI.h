#pragma once

namespace ZemTree {

// The host's engine that actions run against. The tree only stores and hands on the pointer;
// an action evaluated with null still runs.
class IActionEngineAPI {
public:
    virtual ~IActionEngineAPI() = default;
};

} // namespace ZemTree
