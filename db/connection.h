// SPDX-License-Identifier: MIT

#pragma once

#include "db/client_library.h"

#include <QObject>
#include <QStringList>

#include <vector>

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

/// A connection to one database of a Firebird server.
class Connection final : public QObject {
    Q_OBJECT

public:
    /// `parameters`: lines of databaseParameterBlock().
    Connection(const QString& name, const QString& databaseName, QStringList parameters,
               QStringList clientLibraryNames, QObject* parent);
    ~Connection() override;

    [[nodiscard]] const QString& databaseName() const { return databaseName_; }

    /// Sets the connection string (server/port:path). Throws DatabaseError, and changes nothing, when the
    /// name differs from the present one while the connection is open.
    void setDatabaseName(const QString& name);

    [[nodiscard]] bool isConnected() const { return handle_ != nullptr; }

    /// Loads the client library if need be and attaches. Does nothing on an open connection. Throws
    /// DatabaseError.
    void open();

    /// Closes every client, has them release their handles and detaches. Throws DatabaseError when the server
    /// does not answer as it should; everything is closed then as well.
    void close();

    /// Runs one call of the client library. A call that reports the connection as lost leaves the connection
    /// closed, with all its handles dropped, so that it can be opened again. Throws DatabaseError.
    template <typename Call>
    auto run(Call&& call) {
        try {
            return library_.run(std::forward<Call>(call));
        } catch (const DatabaseError& error) {
            if (error.meansLostConnection()) {
                dropHandles();
            } else if (error.isOfServer()) {
                requireAnswer();
            }
            throw;
        }
    }

    /// The attachment; throws DatabaseError when the connection is not open.
    [[nodiscard]] Firebird::IAttachment& handle() const;

    /// Makes a client known from its making to its end. Handles are given up in reverse order, since those of
    /// a later client (a statement) may rest on those of an earlier one (the transaction).
    void add(ConnectionClient& client);
    void remove(ConnectionClient& client);

private:
    void detach();
    void dropHandles();
    void breakLine();
    /// Asks whether the connection still exists, which the error of a call may hide: a cursor whose closing
    /// went unanswered is reported as open. Throws the DatabaseError of a lost connection.
    void requireAnswer();

    QString databaseName_;
    QStringList parameters_;
    ClientLibrary library_;
    Handle<Firebird::IAttachment> handle_;
    std::vector<ConnectionClient*> clients_;
};

} // namespace db
