#include "db/signal_keeper.h"

namespace db {

#ifdef Q_OS_WIN

SignalKeeper::SignalKeeper() noexcept = default;
SignalKeeper::~SignalKeeper() = default;

#else

SignalKeeper::SignalKeeper() noexcept {
    sigaction(SIGINT, nullptr, &interrupt_);
    sigaction(SIGTERM, nullptr, &terminate_);
}

SignalKeeper::~SignalKeeper() {
    sigaction(SIGINT, &interrupt_, nullptr);
    sigaction(SIGTERM, &terminate_, nullptr);
}

#endif

} // namespace db
