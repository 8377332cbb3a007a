// SPDX-License-Identifier: MIT

#include "db/transaction.h"

#include "db/connection.h"
#include "db/parameter_block.h"

namespace db {

Transaction::Transaction(const QString& name, QStringList parameters, Connection& connection, QObject* parent)
    : QObject(parent), connection_(connection), parameters_(std::move(parameters)) {
    setObjectName(name);
    connection_.add(*this);
}

Transaction::~Transaction() {
    connection_.remove(*this);
}

void Transaction::start() {
    if (isActive()) {
        return;
    }
    const ParameterBlock block = transactionParameterBlock(parameters_);
    Firebird::IAttachment& attachment = connection_.handle();
    handle_.reset(connection_.run([&](auto* status) {
        return attachment.startTransaction(status, static_cast<unsigned>(block.size()), block.data());
    }));
}

void Transaction::releaseHandles() {
    if (!isActive()) {
        return;
    }
    // It only read: nothing is lost by a rollback.
    connection_.run([&](auto* status) { handle_->rollback(status); });
    // A successful rollback has taken the reference back.
    static_cast<void>(handle_.release());
}

void Transaction::forgetHandles() {
    handle_.reset();
}

} // namespace db
