#include "core/formula/TreeWatcher.h"

#include "core/common/ScopedConnection.h"
#include "core/tree/IValueOut.h"
#include "core/tree/Node.h"

#include <sigc++/trackable.h>

#include <algorithm>
#include <map>

namespace ZemTree {

// One watched node. Its address is the key of the destroy notification at the node, so it stays put in memory.
struct TreeWatcher::Entry {
    TreeWatcher* owner = nullptr;
    Node* node = nullptr;
    // Taken while the node is whole, so that the notification can be removed without touching the node again.
    const sigc::trackable* trackable = nullptr;
    unsigned events = 0;
    Zem::ScopedConnection collection;
    Zem::ScopedConnection position;
    Zem::ScopedConnection valueOut;

    Entry() = default;
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;
    ~Entry()
    {
        if (trackable != nullptr)
            trackable->remove_destroy_notify_callback(this);
    }
};

TreeWatcher::TreeWatcher(Handlers handlers) : _handlers(std::move(handlers)) {}

TreeWatcher::~TreeWatcher()
{
    clear();
}

void TreeWatcher::clear()
{
    // Moved out first: destroying an entry must not meet a half-cleared list.
    std::vector<std::unique_ptr<Entry>> entries;
    entries.swap(_entries);
}

bool TreeWatcher::isWatching(const Node* node) const
{
    return std::any_of(_entries.begin(), _entries.end(),
                       [node](const std::unique_ptr<Entry>& entry) { return entry->node == node; });
}

void TreeWatcher::watch(const std::vector<std::pair<Node*, unsigned>>& nodes)
{
    std::map<Node*, unsigned> wanted;
    for (const auto& request : nodes) {
        if (request.first != nullptr)
            wanted[request.first] |= request.second;
    }

    // Keep what stays; drop the rest.
    std::vector<std::unique_ptr<Entry>> kept;
    std::vector<std::unique_ptr<Entry>> dropped;
    for (std::unique_ptr<Entry>& entry : _entries) {
        const auto found = wanted.find(entry->node);
        if (found != wanted.end() && found->second == entry->events) {
            wanted.erase(found);
            kept.push_back(std::move(entry));
        }
        else {
            dropped.push_back(std::move(entry));
        }
    }
    _entries = std::move(kept);
    dropped.clear();

    for (const auto& request : wanted) {
        auto entry = std::make_unique<Entry>();
        entry->owner = this;
        entry->node = request.first;
        entry->events = request.second;
        Node* const node = request.first;
        if ((request.second & CollectionChanged) != 0) {
            entry->collection = node->getSignalCollectionChanged().connect([this](Node::Args&) {
                if (_handlers.onTreeChanged)
                    _handlers.onTreeChanged();
            });
        }
        if ((request.second & PositionChanged) != 0) {
            entry->position = node->getSignalHierarchicalPositionChanged().connect([this](Node*, Node::Args&) {
                if (_handlers.onTreeChanged)
                    _handlers.onTreeChanged();
            });
        }
        if ((request.second & ValueOutChanged) != 0) {
            if (auto* value = dynamic_cast<IValueOut*>(node)) {
                entry->valueOut = value->getSignalValueOutChanged().connect([this] {
                    if (_handlers.onValueOutChanged)
                        _handlers.onValueOutChanged();
                });
            }
        }
        const sigc::trackable* trackable = node;
        entry->trackable = trackable;
        trackable->add_destroy_notify_callback(entry.get(), &TreeWatcher::_onEntryDestroyed);
        _entries.push_back(std::move(entry));
    }
}

void* TreeWatcher::_onEntryDestroyed(void* data)
{
    auto* entry = static_cast<Entry*>(data);
    // The node is past its own destructor: its signals are gone with it, and its list of notifications is
    // being emptied, so neither is touched again.
    entry->trackable = nullptr;
    entry->owner->_forget(entry);
    return nullptr;
}

void TreeWatcher::_forget(Entry* entry)
{
    const Node* const node = entry->node;
    const auto found = std::find_if(_entries.begin(), _entries.end(),
                                    [entry](const std::unique_ptr<Entry>& item) { return item.get() == entry; });
    if (found != _entries.end()) {
        std::unique_ptr<Entry> gone = std::move(*found);
        _entries.erase(found);
    }
    if (_handlers.onDestroyed)
        _handlers.onDestroyed(node);
}

} // namespace ZemTree
