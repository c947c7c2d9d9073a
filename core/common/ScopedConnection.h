#pragma once

#include <sigc++/connection.h>

namespace Zem {

// Holds one connection and cuts it when the holder dies or is given another, for a connection that is replaced
// or that points into an object which may outlive its owner.
class ScopedConnection {
public:
    ScopedConnection() = default;
    ~ScopedConnection() { _connection.disconnect(); }
    ScopedConnection(const ScopedConnection&) = delete;
    ScopedConnection& operator=(const ScopedConnection&) = delete;
    ScopedConnection& operator=(sigc::connection c)
    {
        _connection.disconnect();
        _connection = c;
        return *this;
    }

    void disconnect() { _connection.disconnect(); }
    bool connected() const { return _connection.connected(); }

private:
    sigc::connection _connection;
};

} // namespace Zem
