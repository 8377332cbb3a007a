// SPDX-License-Identifier: MIT

#include "bench/rows.h"

#include <QProcess>

#include <chrono>
#include <stdexcept>

namespace bench {

namespace {

constexpr int rounds = 41;
constexpr int patience = 30'000;

/// Milliseconds from the start of a program until its maximised main window is painted on screen. The program
/// is the one that users run; the watch is preloaded into it.
double startOf(const char* program) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(TARVELO_START_WATCH));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const auto start = std::chrono::steady_clock::now().time_since_epoch();
    process.start(QString::fromUtf8(program), QStringList());
    if (!process.waitForFinished(patience) || process.exitCode() != 0) {
        throw std::runtime_error(std::string(program) + " does not come on screen");
    }
    bool isNumber = false;
    const std::chrono::nanoseconds shown(process.readAllStandardOutput().trimmed().toLongLong(&isNumber));
    if (!isNumber) {
        throw std::runtime_error(std::string(program) + " has ended before it came on screen");
    }
    return std::chrono::duration<double, std::milli>(shown - start).count();
}

} // namespace

std::vector<Result> measureStart(const Surroundings&) {
    const Medians medians = alternate(
        rounds, [](int) { return startOf(TARVELO_PROGRAM); },
        [](int) { return startOf(TARVELO_BARE_WINDOW); });
    return {{QStringLiteral("start"), QStringLiteral("start until the main window is painted"), medians.ours,
             medians.bare, QStringLiteral("ms"), LimitOf::Ratio, 1.15}};
}

} // namespace bench
