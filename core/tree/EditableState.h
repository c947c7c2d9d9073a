#pragma once

#include "core/common/Nullable.h"

#include <sigc++/signal.h>

namespace ZemTree {

class Unitable;

// Whether the user may edit a unit. Empty means "as the parent": the nearest Unitable above decides, and a
// unit with none above it is editable. True or false decide for the unit itself.
class EditableState {
public:
    using SignalChanged = sigc::signal<void, const Zem::NullableBool&>;

    explicit EditableState(const Unitable* owner) : _owner(owner) {}
    EditableState(const EditableState&) = delete;
    EditableState& operator=(const EditableState&) = delete;

    // Compares first; on a change stores and emits.
    void set(const Zem::NullableBool& value);
    EditableState& operator=(const Zem::NullableBool& value)
    {
        set(value);
        return *this;
    }
    const Zem::NullableBool& get() const { return _value; }
    // The effective editability after the inheritance rule.
    bool isEditable() const;

    SignalChanged& getSignalChanged() { return _signalChanged; }

private:
    const Unitable* _owner;
    Zem::NullableBool _value;
    SignalChanged _signalChanged;
};

} // namespace ZemTree
