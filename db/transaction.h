// SPDX-License-Identifier: MIT

#pragma once

#include "db/client_library.h"
#include "db/connection.h"

#include <QObject>
#include <QStringList>

namespace db {

/// The one transaction of a connection; started by the first dataset that needs it.
class Transaction final : public QObject, private ConnectionClient {
    Q_OBJECT

public:
    /// `parameters`: words of transactionParameterBlock().
    Transaction(const QString& name, QStringList parameters, Connection& connection, QObject* parent);
    ~Transaction() override;

    [[nodiscard]] bool isActive() const { return handle_ != nullptr; }

    /// Starts the transaction unless it is active. Throws DatabaseError, also when there is no connection.
    void start();

    [[nodiscard]] Firebird::ITransaction* handle() const { return handle_.get(); }

private:
    void close() override {}
    void releaseHandles() override;
    void forgetHandles() override;

    Connection& connection_;
    QStringList parameters_;
    Handle<Firebird::ITransaction> handle_;
};

} // namespace db
