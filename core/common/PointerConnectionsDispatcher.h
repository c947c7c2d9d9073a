#pragma once

#include <sigc++/connection.h>

#include <cstddef>
#include <map>
#include <vector>

namespace Zem {

// Holds signal connections grouped by the object they belong to, so that all connections to one object can be
// cut when it leaves, and all of them when the holder dies. The key only names the group: it is never followed.
class PointerConnectionsDispatcher {
public:
    PointerConnectionsDispatcher() = default;
    ~PointerConnectionsDispatcher();
    PointerConnectionsDispatcher(const PointerConnectionsDispatcher&) = delete;
    PointerConnectionsDispatcher& operator=(const PointerConnectionsDispatcher&) = delete;

    // Adds `connection` to the group of `key`; a key may hold several connections.
    void connect(const void* key, const sigc::connection& connection);
    // Disconnects and forgets the connections of `key`; an unknown key is left alone.
    void disconnect(const void* key);
    // Disconnects and forgets every connection.
    void disconnectAll();

    bool contains(const void* key) const;
    // The number of connections held, over all keys.
    std::size_t size() const;

private:
    std::map<const void*, std::vector<sigc::connection>> _connections;
};

} // namespace Zem
