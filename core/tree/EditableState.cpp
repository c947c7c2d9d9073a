#include "core/tree/EditableState.h"

#include "core/tree/Unitable.h"

namespace ZemTree {

void EditableState::set(const Zem::NullableBool& value)
{
    if (_value == value)
        return;
    _value = value;
    _signalChanged.emit(_value);
}

bool EditableState::isEditable() const
{
    if (_value.hasValue())
        return _value.getValue();
    for (const Node* node = _owner != nullptr ? _owner->getParent() : nullptr; node != nullptr;
         node = node->getParent()) {
        if (const auto* unitable = dynamic_cast<const Unitable*>(node))
            return unitable->getIsEditable().isEditable();
    }
    return true;
}

} // namespace ZemTree
