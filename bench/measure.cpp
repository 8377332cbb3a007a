// SPDX-License-Identifier: MIT

#include "bench/measure.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace bench {

bool Result::isMet() const {
    switch (limitOf) {
    case LimitOf::Ratio:
        return ratio() <= limit;
    case LimitOf::Value:
        return ours <= limit;
    case LimitOf::Difference:
        break;
    }
    return ours - bare <= limit;
}

double timeOf(const std::function<void()>& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

Medians alternate(int rounds, const std::function<double(int round)>& ours,
                  const std::function<double(int round)>& bare) {
    std::vector<double> oursTaken;
    std::vector<double> bareTaken;
    for (int round = 0; round <= rounds; ++round) {
        const bool oursFirst = round % 2 == 0;
        if (!oursFirst) {
            bareTaken.push_back(bare(round));
        }
        oursTaken.push_back(ours(round));
        if (oursFirst) {
            bareTaken.push_back(bare(round));
        }
        if (round == 0) {
            oursTaken.clear();
            bareTaken.clear();
        }
    }
    return {median(std::move(oursTaken)), median(std::move(bareTaken))};
}

void requireSame(const char* things, long long ours, long long bare) {
    if (ours != bare) {
        throw std::runtime_error(std::string(things) + ": " + std::to_string(ours) + " of ours, but " +
                                 std::to_string(bare) + " of the bare counterpart");
    }
}

} // namespace bench
