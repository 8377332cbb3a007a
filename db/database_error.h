// SPDX-License-Identifier: MIT

#pragma once

#include "base/error.h"

#include <QString>

#include <vector>

namespace db {

/// A failure of the database server, of its client library, or of the access layer itself.
class DatabaseError : public base::Error {
public:
    /// `codes` are the Firebird error codes (isc_... of iberror.h) of the status vector, outermost first;
    /// empty when the access layer itself refuses.
    explicit DatabaseError(const QString& message, std::vector<int> codes = {});

    /// True when the server or its client library has reported it.
    [[nodiscard]] bool isOfServer() const noexcept { return !codes_.empty(); }

    /// True when the codes say that the connection to the server no longer exists.
    [[nodiscard]] bool meansLostConnection() const noexcept;

private:
    std::vector<int> codes_;
};

} // namespace db
