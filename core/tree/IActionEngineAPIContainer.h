#pragma once

namespace ZemTree {

class IActionEngineAPI;

// A node that hands on the host's action engine to the actions below it.
class IActionEngineAPIContainer {
public:
    virtual ~IActionEngineAPIContainer() = default;
    virtual IActionEngineAPI* getActionEngineAPI() = 0;
};

} // namespace ZemTree
