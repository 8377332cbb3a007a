// SPDX-License-Identifier: MIT

#include "db/connection.h"

#include "db/parameter_block.h"

#include <ibase.h>

#include <ranges>

namespace db {

Connection::Connection(const QString& name, const QString& databaseName, QStringList parameters,
                       QStringList clientLibraryNames, QObject* parent)
    : QObject(parent),
      databaseName_(databaseName),
      parameters_(std::move(parameters)),
      library_(std::move(clientLibraryNames)) {
    setObjectName(name);
}

Connection::~Connection() {
    dropHandles();
}

void Connection::setDatabaseName(const QString& name) {
    if (name == databaseName_) {
        return;
    }
    if (isConnected()) {
        throw DatabaseError(QStringLiteral("Имя базы данных нельзя изменить, пока соединение открыто (%1)")
                                .arg(databaseName_));
    }
    databaseName_ = name;
}

void Connection::open() {
    if (isConnected()) {
        return;
    }
    library_.load();
    const QByteArray name = databaseName_.toLocal8Bit();
    const ParameterBlock block = databaseParameterBlock(parameters_);
    handle_.reset(library_.run([&](auto* status) {
        return library_.provider().attachDatabase(status, name.constData(),
                                                  static_cast<unsigned>(block.size()), block.data());
    }));
}

void Connection::close() {
    if (!isConnected()) {
        return;
    }
    for (ConnectionClient* client : clients_) {
        client->close();
    }
    try {
        detach();
    } catch (const DatabaseError&) {
        dropHandles();
        throw;
    }
}

void Connection::detach() {
    for (ConnectionClient* client : std::views::reverse(clients_)) {
        client->releaseHandles();
    }
    library_.run([&](auto* status) { handle_->detach(status); });
    // A successful detach has taken the reference back.
    static_cast<void>(handle_.release());
}

void Connection::requireAnswer() {
    try {
        library_.run([&](auto* status) { handle().ping(status); });
    } catch (const DatabaseError& error) {
        if (error.meansLostConnection()) {
            dropHandles();
            throw;
        }
    }
}

Firebird::IAttachment& Connection::handle() const {
    if (!isConnected()) {
        throw DatabaseError(QStringLiteral("Соединение с базой данных не открыто"));
    }
    return *handle_;
}

void Connection::add(ConnectionClient& client) {
    clients_.push_back(&client);
}

void Connection::remove(ConnectionClient& client) {
    std::erase(clients_, &client);
}

/// The client asks the server even when a handle is released, and a server that has ended a connection may
/// have left the line open without reading it any more: the client would wait for ever.
void Connection::breakLine() {
    if (!isConnected()) {
        return;
    }
    try {
        library_.run([&](auto* status) { handle_->cancelOperation(status, fb_cancel_abort); });
    } catch (const DatabaseError&) {
        // Then the client has noticed by itself that there is no line.
    }
}

void Connection::dropHandles() {
    breakLine();
    for (ConnectionClient* client : std::views::reverse(clients_)) {
        client->forgetHandles();
    }
    handle_.reset();
}

} // namespace db
