// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <chrono>
#include <functional>
#include <vector>

namespace bench {

/// What a limit speaks of.
enum class LimitOf {
    Ratio,      ///< ours / bare
    Value,      ///< ours
    Difference, ///< ours - bare
};

/// A measured work beside its bare counterpart.
struct Result {
    QString name;
    QString work;
    double ours;
    double bare;
    QString unit; ///< of ours and bare
    LimitOf limitOf;
    double limit;

    [[nodiscard]] double ratio() const { return ours / bare; }
    [[nodiscard]] bool isMet() const;
};

/// Milliseconds that `action` takes.
[[nodiscard]] double timeOf(const std::function<void()>& action);

[[nodiscard]] double median(std::vector<double> values);

/// Medians of two works.
struct Medians {
    double ours;
    double bare;
};

/// Measures two works in turn, `rounds` times each after a round that does not count. Each gets the number of
/// the round and returns what it took. They take turns in going first, so that neither always finds what the
/// other one has just brought into the caches.
[[nodiscard]] Medians alternate(int rounds, const std::function<double(int round)>& ours,
                                const std::function<double(int round)>& bare);

/// Throws std::runtime_error unless both works dealt with the same number of things.
void requireSame(const char* things, long long ours, long long bare);

} // namespace bench
