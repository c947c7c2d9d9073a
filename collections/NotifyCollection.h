#pragma once

#include "collections/CollectionTexts.h"
#include "collections/ICollection.h"
#include "collections/INotifyCollectionChanged.h"

#include <sigc++/trackable.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

namespace Zem {

// An ordered, observable list of pointers. Every change runs a fixed sequence of hooks: a refusal step that
// can veto it before anything happens, the change itself, then the signal. Items are not owned here.
template <class T>
class NotifyCollection : public virtual sigc::trackable,
                         public virtual ICollection<T>,
                         public virtual INotifyCollectionChanged<T> {
public:
    using iterator = CollectionIterator<T>;
    using const_iterator = CollectionIterator<T>;
    using Args = NotifyCollectionChangedSignalArgs<T>;

    NotifyCollection() = default;
    NotifyCollection(const NotifyCollection&) = delete;
    NotifyCollection& operator=(const NotifyCollection&) = delete;
    virtual ~NotifyCollection() = default;

    std::size_t size() const override { return _items.size(); }
    bool empty() const override { return _items.empty(); }

    std::int64_t getIndexOf(const T& item) const override
    {
        const auto found = std::find(_items.begin(), _items.end(), item);
        return found == _items.end() ? -1 : static_cast<std::int64_t>(found - _items.begin());
    }
    T& at(std::size_t index, T* = nullptr) override { return _items.at(index); }
    const T& at(std::size_t index, T* = nullptr) const override { return _items.at(index); }
    iterator begin(T* = nullptr) override { return iterator(_items.data()); }
    iterator end(T* = nullptr) override { return iterator(_items.data() + _items.size()); }
    const_iterator begin(T* = nullptr) const override { return const_iterator(_items.data()); }
    const_iterator end(T* = nullptr) const override { return const_iterator(_items.data() + _items.size()); }
    T& front(T* = nullptr) override { return _items.front(); }
    const T& front(T* = nullptr) const override { return _items.front(); }
    T& back(T* = nullptr) override { return _items.back(); }
    const T& back(T* = nullptr) const override { return _items.back(); }

    bool isLocked() const { return _isLocked; }

    // Appends `item`. Throws std::logic_error, changing nothing, when the change is refused.
    void add(T item) { insert(_items.size(), item); }

    // Inserts `item` before `index`; `index == size()` appends. Throws std::out_of_range for a bigger index
    // and std::logic_error when the change is refused, in both cases before any hook.
    void insert(std::size_t index, T item)
    {
        _refuseAdding(item, index);
        _insertAccepted(item, index);
    }

    // Removes `item`; an item that is not present is ignored.
    void remove(const T& item)
    {
        const std::int64_t index = getIndexOf(item);
        if (index < 0)
            return;
        T removed = item;
        _removeAt(removed, static_cast<std::size_t>(index));
    }

    // Empties the collection from the last item to the first. A refusal in the middle throws and leaves the
    // items not yet removed in place.
    void reset()
    {
        _onReset();
        while (!_items.empty()) {
            T item = _items.back();
            _removeAt(item, _items.size() - 1);
        }
        _onPostReset();
    }

    // Moves the item at `oldIndex` to `index`, shifting the ones between. Refused on a locked collection.
    void move(std::size_t oldIndex, std::size_t index)
    {
        if (oldIndex >= _items.size() || index >= _items.size())
            throw std::out_of_range("NotifyCollection::move: index out of range");
        if (_isLocked)
            throw std::logic_error(CollectionTexts::readOnlyText());
        if (oldIndex == index)
            return;
        T item = _items[oldIndex];
        if (oldIndex < index)
            std::rotate(_items.begin() + oldIndex, _items.begin() + oldIndex + 1, _items.begin() + index + 1);
        else
            std::rotate(_items.begin() + index, _items.begin() + oldIndex, _items.begin() + oldIndex + 1);
        _onMoved(item, index);
        Args args{NotifyCollectionChangedAction::Moved, item, index, oldIndex};
        _onCollectionChanged(args);
    }

protected:
    virtual void _onAdding(T&, std::size_t) {}
    virtual void _onRemoving(T&, std::size_t) {}
    virtual void _onAdded(T&, std::size_t) {}
    virtual void _onRemoved(T&, std::size_t) {}
    // The only step after which an item may be destroyed: observers of the signal could still read it.
    virtual void _onPostRemoved(T&, std::size_t) {}
    virtual void _onMoved(T&, std::size_t) {}
    // A non-empty text refuses the change.
    virtual std::string _getAddingItemError(T&, std::size_t) { return _readOnlyError(); }
    virtual std::string _getRemovingItemError(T&, std::size_t) { return _readOnlyError(); }
    virtual void _onCollectionChanged(Args& args) { this->signalCollectionChanged.emit(args); }
    virtual void _onReset() {}
    virtual void _onPostReset() {}
    virtual void _lockCollection() { _isLocked = true; }
    virtual void _unlockCollection() { _isLocked = false; }

    // Throws, before any hook, when adding `item` at `index` is refused.
    void _refuseAdding(T& item, std::size_t index)
    {
        if (index > _items.size())
            throw std::out_of_range("NotifyCollection::insert: index out of range");
        const std::string error = _getAddingItemError(item, index);
        if (!error.empty() || _isLocked)
            throw std::logic_error(error);
    }

    // The adding steps after the refusal step.
    void _insertAccepted(T& item, std::size_t index)
    {
        _onAdding(item, index);
        _items.insert(_items.begin() + static_cast<std::ptrdiff_t>(index), item);
        _onAdded(item, index);
        Args args{NotifyCollectionChangedAction::Added, item, index, 0};
        _onCollectionChanged(args);
    }

    std::vector<T> _items;
    bool _isLocked = false;
    // While true a removed item is not deleted by an owning collection.
    bool _isReleasing = false;

private:
    std::string _readOnlyError() const { return _isLocked ? CollectionTexts::readOnlyText() : std::string(); }

    void _removeAt(T& item, std::size_t index)
    {
        const std::string error = _getRemovingItemError(item, index);
        if (!error.empty() || _isLocked)
            throw std::logic_error(error);
        _onRemoving(item, index);
        _items.erase(_items.begin() + static_cast<std::ptrdiff_t>(index));
        _onRemoved(item, index);
        Args args{NotifyCollectionChangedAction::Removed, item, index, 0};
        _onCollectionChanged(args);
        _onPostRemoved(item, index);
    }
};

} // namespace Zem
