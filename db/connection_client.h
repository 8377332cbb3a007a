#pragma once

namespace db {

/// What holds handles of a connection's server: its transaction and its datasets. They make themselves known
/// to the connection, which so reaches them without knowing what they are.
class ConnectionClient {
public:
    /// The connection is closing; what was read by it goes.
    virtual void close() = 0;

    /// Gives the handles back to the server. Throws DatabaseError.
    virtual void releaseHandles() = 0;

    /// Forgets the handles without asking the server, once the connection is lost.
    virtual void forgetHandles() = 0;

protected:
    ~ConnectionClient() = default;
};

} // namespace db
