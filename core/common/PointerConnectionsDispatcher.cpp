#include "core/common/PointerConnectionsDispatcher.h"

#include <utility>

namespace Zem {

PointerConnectionsDispatcher::~PointerConnectionsDispatcher()
{
    disconnectAll();
}

void PointerConnectionsDispatcher::connect(const void* key, const sigc::connection& connection)
{
    _connections[key].push_back(connection);
}

void PointerConnectionsDispatcher::disconnect(const void* key)
{
    const auto found = _connections.find(key);
    if (found == _connections.end())
        return;
    // Take the group out first: destroying a slot may run code that calls back into this object.
    std::vector<sigc::connection> group = std::move(found->second);
    _connections.erase(found);
    for (sigc::connection& connection : group)
        connection.disconnect();
}

void PointerConnectionsDispatcher::disconnectAll()
{
    // Take everything out first, for the same reason as in disconnect().
    std::map<const void*, std::vector<sigc::connection>> all;
    all.swap(_connections);
    for (auto& group : all) {
        for (sigc::connection& connection : group.second)
            connection.disconnect();
    }
}

bool PointerConnectionsDispatcher::contains(const void* key) const
{
    return _connections.find(key) != _connections.end();
}

std::size_t PointerConnectionsDispatcher::size() const
{
    std::size_t count = 0;
    for (const auto& group : _connections)
        count += group.second.size();
    return count;
}

} // namespace Zem
