#pragma once

#include "db/client_library.h"

#include <QObject>
#include <QStringList>

namespace db {

class Connection;

/// The one transaction of a connection; started by the first dataset that needs it.
class Transaction final : public QObject {
    Q_OBJECT

public:
    /// `parameters`: words of transactionParameterBlock().
    Transaction(const QString& name, QStringList parameters, Connection& connection, QObject* parent);
    ~Transaction() override;

    [[nodiscard]] bool isActive() const { return handle_ != nullptr; }

    /// Starts the transaction unless it is active. Throws DatabaseError, also when there is no connection.
    void start();

    /// Ends the transaction; it only read, so it is rolled back. Throws DatabaseError.
    void end();

    /// Forgets the server's handle without asking the server, once the connection is lost.
    void drop();

    [[nodiscard]] Firebird::ITransaction* handle() const { return handle_.get(); }

private:
    Connection& connection_;
    QStringList parameters_;
    Handle<Firebird::ITransaction> handle_;
};

} // namespace db
