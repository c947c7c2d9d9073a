#pragma once

#include <sigc++/signal.h>

namespace ZemTree {

// A wake-up without arguments: something in this object's structure changed.
class IStructureChanged {
public:
    virtual ~IStructureChanged() = default;
    sigc::signal<void>& getSignalStructureChanged() { return signalStructureChanged; }

    sigc::signal<void> signalStructureChanged;
};

} // namespace ZemTree
