#pragma once

#include <QtGlobal>

#ifndef Q_OS_WIN
#include <csignal>
#endif

namespace db {

/// Keeps what the process does at SIGINT and SIGTERM over the Firebird client's first attachment. The client
/// would answer them by shutting itself down under the program, which would live on without it.
class SignalKeeper final {
public:
    SignalKeeper() noexcept;
    ~SignalKeeper();
    Q_DISABLE_COPY_MOVE(SignalKeeper)

#ifndef Q_OS_WIN
private:
    struct sigaction interrupt_ = {};
    struct sigaction terminate_ = {};
#endif
};

} // namespace db
