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

// Blocks a structure signal for its lifetime and restores its former state, also when a change throws.
class StructureSignalBlock {
public:
    explicit StructureSignalBlock(IStructureChanged& source)
        : _signal(source.getSignalStructureChanged()), _wasBlocked(_signal.blocked())
    {
        _signal.block();
    }
    ~StructureSignalBlock() { _signal.block(_wasBlocked); }
    StructureSignalBlock(const StructureSignalBlock&) = delete;
    StructureSignalBlock& operator=(const StructureSignalBlock&) = delete;

private:
    sigc::signal<void>& _signal;
    bool _wasBlocked;
};

} // namespace ZemTree
