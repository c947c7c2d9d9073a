#pragma once

#include "core/common/Out.h"
#include "core/tree/IDataContainer.h"

#include <sigc++/signal.h>

#include <memory>

namespace ZemTree {

class ValueFormula;

// The reading side of anything that has a value out, whatever its type.
class IValueOut {
public:
    virtual ~IValueOut() = default;
    // A copy of the current value out's value, wrapped.
    virtual std::shared_ptr<IDataContainer> getValueObject() const = 0;
    // The error of the current value out; null when the value is good.
    virtual const Zem::ErrorPointer& getError() const = 0;
    // The formula that gives the value out now; null when data gives it. Formulas follow it to find cycles.
    virtual const ValueFormula* getActiveFormula() const { return nullptr; }

    sigc::signal<void>& getSignalValueOutChanged() { return signalValueOutChanged; }

    // Fires after the value out changed, with the new record in place.
    sigc::signal<void> signalValueOutChanged;
};

} // namespace ZemTree
