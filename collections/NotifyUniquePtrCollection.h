#pragma once

#include "collections/NotifyCollection.h"

#include <memory>
#include <type_traits>

namespace Zem {

// A notify collection that owns its items: a removed item is deleted once every observer has seen it.
template <class T> class NotifyUniquePtrCollection : public NotifyCollection<T*> {
public:
    NotifyUniquePtrCollection() = default;
    ~NotifyUniquePtrCollection() override
    {
        // Deletes first to last, without hooks or signals.
        for (T* item : this->_items)
            delete item;
        this->_items.clear();
    }

    // Appends and takes ownership; returns the item. A refused item is destroyed with its unique_ptr.
    template <class U> U* add(std::unique_ptr<U> item) { return insert(this->_items.size(), std::move(item)); }

    template <class U> U* insert(std::size_t index, std::unique_ptr<U> item)
    {
        static_assert(std::is_base_of<T, U>::value, "the item must derive from the collection's item type");
        T* raw = item.get();
        this->_refuseAdding(raw, index);
        item.release();
        this->_insertAccepted(raw, index);
        return static_cast<U*>(raw);
    }

    void remove(T* item) { NotifyCollection<T*>::remove(item); }

    // Removes `item` with every hook and signal, but hands it back instead of deleting it. Null when absent.
    std::unique_ptr<T> release(T* item)
    {
        if (this->getIndexOf(item) < 0)
            return nullptr;
        struct ReleasingGuard {
            bool& flag;
            bool before;
            ~ReleasingGuard() { flag = before; }
        } guard{this->_isReleasing, this->_isReleasing};
        this->_isReleasing = true;
        NotifyCollection<T*>::remove(item);
        return std::unique_ptr<T>(item);
    }

protected:
    void _onPostRemoved(T*& item, std::size_t) override
    {
        if (!this->_isReleasing && item != nullptr)
            delete item;
    }
};

} // namespace Zem
