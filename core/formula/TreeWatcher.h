#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace ZemTree {

class Node;

// Watches a few nodes of a tree on behalf of one owner: changes among a node's children, moves of a node (or of
// an ancestor) in the tree, and changes of a node's value out go to the owner's handlers. A watched node that
// is destroyed without any signal (a whole tree torn down) is noticed as well, so that the owner never uses a
// pointer to it again; the watcher forgets such a node before it calls `onDestroyed`.
//
// Handlers run on the thread that changed the tree. They may call `watch` and `clear`.
class TreeWatcher {
public:
    enum Event : unsigned {
        CollectionChanged = 1, // the node's own collection signal
        PositionChanged = 2,   // the node's hierarchical position signal
        ValueOutChanged = 4    // the node's value-out signal, when it is an IValueOut
    };

    struct Handlers {
        std::function<void()> onTreeChanged;
        std::function<void()> onValueOutChanged;
        // The node is gone; the pointer serves only to compare.
        std::function<void(const Node* destroyed)> onDestroyed;
    };

    explicit TreeWatcher(Handlers handlers);
    ~TreeWatcher();
    TreeWatcher(const TreeWatcher&) = delete;
    TreeWatcher& operator=(const TreeWatcher&) = delete;

    // Watches exactly these nodes for these events (a bit set of Event) from now on; a node named twice gets
    // the union. Connections that stay the same are kept, so that a handler may call this while the signal it
    // came from is still being emitted. Null nodes are skipped.
    void watch(const std::vector<std::pair<Node*, unsigned>>& nodes);
    void clear();

    bool isWatching(const Node* node) const;

private:
    struct Entry;

    static void* _onEntryDestroyed(void* data);
    void _forget(Entry* entry);

    Handlers _handlers;
    std::vector<std::unique_ptr<Entry>> _entries;
};

} // namespace ZemTree
