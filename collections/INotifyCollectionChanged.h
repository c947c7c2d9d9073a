#pragma once

#include "collections/NotifyCollectionChangedSignalArgs.h"

#include <sigc++/signal.h>

namespace Zem {

// Tells observers what happened to a collection, after it happened.
template <class T> class INotifyCollectionChanged {
public:
    using SignalCollectionChanged = sigc::signal<void, NotifyCollectionChangedSignalArgs<T>&>;

    virtual ~INotifyCollectionChanged() = default;
    SignalCollectionChanged& getSignalCollectionChanged() { return signalCollectionChanged; }

    SignalCollectionChanged signalCollectionChanged;
};

} // namespace Zem
