// SPDX-License-Identifier: MIT

#pragma once

#include "db/database_error.h"

#include <QLibrary>
#include <QStringList>

#include <firebird/Interface.h>

#include <memory>

namespace db {

/// Releases what the Firebird client counts references of.
struct Releaser {
    template <typename Interface>
    void operator()(Interface* counted) const {
        counted->release();
    }
};

/// A counted object of the Firebird client (attachment, transaction, statement, ...).
template <typename Interface>
using Handle = std::unique_ptr<Interface, Releaser>;

/// The Firebird client library, loaded by name the first time it is needed.
class ClientLibrary final {
public:
    /// `names` are tried in turn; defaultNames() are those of the platform.
    explicit ClientLibrary(QStringList names = defaultNames());

    /// On Windows "gds64.dll" ("gds32.dll" for 32 bits), then "fbclient.dll"; elsewhere "libfbclient.so.2",
    /// then "libfbclient.so".
    [[nodiscard]] static QStringList defaultNames();

    /// Loads the library unless it is loaded. Throws DatabaseError when no library of the names is
    /// found, or one that is too old. SIGINT and SIGTERM go on doing what they did.
    void load();

    /// The object through which databases are attached. load() must have succeeded.
    [[nodiscard]] Firebird::IProvider& provider() const { return *provider_; }

    /// Runs `call(status)`, turning the client's exceptions into DatabaseError with the server's status text.
    template <typename Call>
    auto run(Call&& call) const {
        const std::unique_ptr<Firebird::IStatus, StatusDisposer> status(master_->getStatus());
        Firebird::ThrowStatusWrapper wrapper(status.get());
        try {
            return call(&wrapper);
        } catch (const Firebird::FbException& failure) {
            throw databaseError(*failure.getStatus());
        }
    }

private:
    struct StatusDisposer {
        void operator()(Firebird::IStatus* status) const { status->dispose(); }
    };

    void keepSignals() const;
    [[nodiscard]] DatabaseError databaseError(Firebird::IStatus& status) const;

    QStringList names_;
    QLibrary library_;
    Firebird::IMaster* master_ = nullptr; // lives as long as the library
    Handle<Firebird::IProvider> provider_;
};

} // namespace db
