#pragma once

#include "collections/IStructureChanged.h"
#include "collections/NotifyUniquePtrCollection.h"

#include <sigc++/connection.h>

#include <map>

namespace ZemTree {

// An owning collection that also listens to its items: adding or removing an item, or a change inside one,
// reaches observers as one structure signal. The list is the fact, the signal only a wake-up.
template <class T>
class NotifyUniquePtrCollectionStructure : public Zem::NotifyUniquePtrCollection<T>, public IStructureChanged {
public:
    NotifyUniquePtrCollectionStructure() = default;
    ~NotifyUniquePtrCollectionStructure() override
    {
        // The items outlive this part of the object; their signals must not reach it any more.
        for (auto& entry : _itemConnections)
            entry.second.disconnect();
    }

protected:
    void _onAdded(T*& item, std::size_t index) override
    {
        Zem::NotifyUniquePtrCollection<T>::_onAdded(item, index);
        if (item != nullptr) {
            sigc::connection& kept = _itemConnections[item];
            kept.disconnect();
            kept = item->getSignalStructureChanged().connect([this] { signalStructureChanged.emit(); });
        }
        signalStructureChanged.emit();
    }

    void _onRemoved(T*& item, std::size_t index) override
    {
        Zem::NotifyUniquePtrCollection<T>::_onRemoved(item, index);
        // The entry stays; a pointer added again overwrites it.
        const auto found = _itemConnections.find(item);
        if (found != _itemConnections.end())
            found->second.disconnect();
        signalStructureChanged.emit();
    }

    std::map<T*, sigc::connection> _itemConnections;
};

} // namespace ZemTree
