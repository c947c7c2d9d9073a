#pragma once

namespace Zem {

// What every view interface derives from; a presenter owns its view through it.
class IView {
public:
    virtual ~IView() = default;
};

} // namespace Zem
