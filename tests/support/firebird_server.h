// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace test {

/// Addresses of the servers that ctest starts for all tests.
inline constexpr auto sampleServer = "127.0.0.11";
inline constexpr auto limitsServer = "127.0.0.12";

/// Values at their limits in every column.
inline constexpr auto limitsCatalog = TARVELO_SOURCE_DIR "/tests/support/limits.sql";

/// Ends the server of a root folder at once, as a power cut would. Throws std::runtime_error when there is
/// none.
void killServer(const QString& root);

/// A private server of one test, stopped when the object goes.
class FirebirdServer {
public:
    /// `catalog`: sample, schema or limitsCatalog; `lifetime`: seconds after which it ends by itself. Throws
    /// std::runtime_error when it does not start.
    FirebirdServer(const QString& address, const QString& catalog, int lifetime = 600);
    ~FirebirdServer();
    FirebirdServer(const FirebirdServer&) = delete;
    FirebirdServer& operator=(const FirebirdServer&) = delete;

    [[nodiscard]] const QString& address() const { return address_; }
    void kill() const { killServer(root_); }
    /// Lets it neither read nor answer until resume().
    void pause() const;
    void resume() const;
    /// Starts it again with the same catalog.
    void start() const;

private:
    QString address_;
    QString catalog_;
    int lifetime_;
    QString root_;
};

/// Runs SQL as another client, each statement committed; returns what isql prints. Throws std::runtime_error
/// on failure.
QString runSql(const QString& address, const QString& sql);

/// The one value that a query delivers, as isql prints it, without blanks around.
QString sqlValue(const QString& address, const QString& query);

} // namespace test
