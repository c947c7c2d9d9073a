#pragma once

#include "collections/NotifyCollection.h"
#include "presentation/frame/CollectionOrientation.h"
#include "presentation/frame/EmptyViewPresenter.h"
#include "presentation/frame/IEditableCollectionView.h"
#include "presentation/frame/IPresenterFactory.h"
#include "presentation/frame/PresenterBase.h"
#include "presentation/frame/UpdateViewGuard.h"

#include <sigc++/connection.h>
#include <sigc++/signal.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

namespace Zem {

// Mirrors a notify collection as a list of child presenters, one per item in the collection's order, and their
// views in a collection view. Changes of the collection may come from the worker: each step waits until the GUI
// thread has applied it to the view, so children and view agree whenever the next change arrives. The view is
// touched only once it is inited; its init adds every child then.
template <class T, class C = NotifyCollection<T>>
class NotifyCollectionBasePresenter : public PresenterBase<IEditableCollectionView> {
public:
    explicit NotifyCollectionBasePresenter(IPresenterFactory<T>& factory)
        : _childFactory([&factory](T item) { return factory.createPresenter(item); })
    {
    }

    // The token goes first, so queued updates turn into nothing; then the connection, then the children, each
    // deleting its own view; the factory function last.
    ~NotifyCollectionBasePresenter() override
    {
        _updateViewGuard.reset();
        _collectionConnection.disconnect();
        _children.clear();
    }

    // Raised when the test "all children are empty" changes its outcome; the argument is the new outcome.
    sigc::signal<void, bool> signalIsEmptyChanged;

    // Replaces the mirrored collection; null mirrors nothing. GUI thread.
    void setCollection(C* collection)
    {
        const bool wasEmpty = isEmpty();
        if (_collection != nullptr) {
            _collectionConnection.disconnect();
            if (_isViewInited)
                _updateViewGuard->safeWaitUpdateView([this] { _view->clear(); });
            _children.clear();
        }
        _collection = collection;
        if (_collection != nullptr) {
            for (T item : *_collection) {
                _children.push_back(_createChild(item));
                _onChildAdded(item);
            }
            if (_isViewInited)
                _updateViewGuard->safeWaitUpdateView([this] { _addChildViews(); });
            _collectionConnection = _collection->getSignalCollectionChanged().connect(
                [this](NotifyCollectionChangedSignalArgs<T>& args) { _onCollectionChanged(args); });
        }
        _raiseIsEmptyChanged(wasEmpty);
    }

    C* getCollection() const { return _collection; }

    // True when no child shows anything: no children, or only empty places and null answers of the factory.
    bool isEmpty() const
    {
        return std::all_of(_children.begin(), _children.end(), [](const std::unique_ptr<IPresenter>& child) {
            return !child || dynamic_cast<const EmptyViewPresenter*>(child.get()) != nullptr;
        });
    }

    const std::vector<std::unique_ptr<IPresenter>>& getChildren() const { return _children; }

    // Set before the first getView(); the default view is a column.
    void setOrientation(CollectionOrientation orientation) { _orientation = orientation; }

protected:
    std::unique_ptr<IEditableCollectionView> _createDefaultView() override
    {
        return createCollectionBoxView(_orientation);
    }

    void _onViewInited() override
    {
        _updateViewGuard->safeWaitUpdateView([this] { _addChildViews(); });
    }

    virtual bool _isHidden(T /*item*/) const { return false; }
    virtual void _onChildAdded(T& /*item*/) {}
    virtual void _onChildRemoved(const T& /*item*/) {}

    // Runs on the thread that changed the collection and waits there: the step itself, children and view alike,
    // runs on the GUI thread, which makes and deletes all presenters.
    void _onCollectionChanged(NotifyCollectionChangedSignalArgs<T>& args)
    {
        _updateViewGuard->safeWaitUpdateView([this, &args] { _applyChange(args); });
    }

    std::function<std::unique_ptr<IPresenter>(T)> _childFactory;
    std::vector<std::unique_ptr<IPresenter>> _children;
    C* _collection = nullptr;
    sigc::connection _collectionConnection;
    std::unique_ptr<UpdateViewGuard> _updateViewGuard = std::make_unique<UpdateViewGuard>();

private:
    std::unique_ptr<IPresenter> _createChild(T item)
    {
        if (_isHidden(item))
            return std::make_unique<EmptyViewPresenter>();
        return _childFactory(item);
    }

    // The view holds the views of the non-null children only: a child's place there counts those before it.
    std::size_t _getViewIndex(std::size_t index) const
    {
        const auto end = _children.begin() + static_cast<std::ptrdiff_t>(std::min(index, _children.size()));
        return static_cast<std::size_t>(
            std::count_if(_children.begin(), end, [](const std::unique_ptr<IPresenter>& child) { return !!child; }));
    }

    // GUI thread.
    void _addChildViews()
    {
        for (const std::unique_ptr<IPresenter>& child : _children) {
            if (child)
                _view->add(child->getView());
        }
    }

    // GUI thread.
    void _applyChange(NotifyCollectionChangedSignalArgs<T>& args)
    {
        const bool wasEmpty = isEmpty();
        switch (args.action) {
        case NotifyCollectionChangedAction::Added:
            _onItemAdded(args);
            break;
        case NotifyCollectionChangedAction::Removed:
            _onItemRemoved(args);
            break;
        case NotifyCollectionChangedAction::Moved:
            _onItemMoved(args);
            break;
        default:
            return;
        }
        _raiseIsEmptyChanged(wasEmpty);
    }

    void _onItemAdded(NotifyCollectionChangedSignalArgs<T>& args)
    {
        const std::size_t index = static_cast<std::size_t>(args.index);
        if (index > _children.size())
            throw std::out_of_range("NotifyCollectionBasePresenter: added index out of range");
        _children.insert(_children.begin() + static_cast<std::ptrdiff_t>(index), _createChild(args.item));
        IPresenter* const child = _children[index].get();
        if (_isViewInited && child != nullptr)
            _view->insert(_getViewIndex(index), child->getView());
        _onChildAdded(args.item);
    }

    // The view leaves its parent while it is alive; the child is deleted after.
    void _onItemRemoved(NotifyCollectionChangedSignalArgs<T>& args)
    {
        const std::size_t index = static_cast<std::size_t>(args.index);
        if (index >= _children.size())
            throw std::out_of_range("NotifyCollectionBasePresenter: removed index out of range");
        IPresenter* const child = _children[index].get();
        if (_isViewInited && child != nullptr)
            _view->remove(child->getView());
        _onChildRemoved(args.item);
        _children.erase(_children.begin() + static_cast<std::ptrdiff_t>(index));
    }

    // Any direction: the child ends at the new index, the ones between shift by one.
    void _onItemMoved(NotifyCollectionChangedSignalArgs<T>& args)
    {
        const std::size_t from = static_cast<std::size_t>(args.oldIndex);
        const std::size_t to = static_cast<std::size_t>(args.index);
        if (from >= _children.size() || to >= _children.size())
            throw std::out_of_range("NotifyCollectionBasePresenter: moved index out of range");
        const auto at = [this](std::size_t i) { return _children.begin() + static_cast<std::ptrdiff_t>(i); };
        if (from < to)
            std::rotate(at(from), at(from + 1), at(to + 1));
        else if (to < from)
            std::rotate(at(to), at(from), at(from + 1));
        IPresenter* const child = _children[to].get();
        if (_isViewInited && child != nullptr)
            _view->move(_getViewIndex(to), child->getView());
    }

    void _raiseIsEmptyChanged(bool wasEmpty)
    {
        const bool empty = isEmpty();
        if (empty != wasEmpty)
            signalIsEmptyChanged.emit(empty);
    }

    CollectionOrientation _orientation = CollectionOrientation::Vertical;
};

} // namespace Zem
