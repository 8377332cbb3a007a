// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <random>
#include <vector>

namespace test {

/// What a random test begins with: the number in the environment variable TARVELO_SEED, or some fixed ones.
[[nodiscard]] std::vector<std::uint32_t> seeds();

/// Random choices, the same ones for the same seed.
class Random final {
public:
    explicit Random(std::uint32_t seed) : engine_(seed) {}

    /// From 0 on.
    [[nodiscard]] int below(int bound) { return static_cast<int>(engine_() % static_cast<unsigned>(bound)); }
    [[nodiscard]] bool oneIn(int count) { return below(count) == 0; }
    template <typename Values>
    [[nodiscard]] const auto& oneOf(const Values& values) {
        return *(std::begin(values) + below(static_cast<int>(std::size(values))));
    }
    /// Of any size, often one of the ends of the range or a small one.
    [[nodiscard]] std::int64_t number();
    /// Up to 1000 bytes in WIN1251: words, numbers, any bytes, what spreadsheets take amiss.
    [[nodiscard]] QByteArray text();

private:
    std::mt19937 engine_;
};

/// A row of the table RANDOM_ROWS; nothing stands for NULL.
struct RandomRow {
    std::optional<std::int64_t> id, parent; ///< some twice, some missing, some in circles
    std::optional<std::int64_t> kod;        ///< of 32 bits
    std::optional<QByteArray> name;         ///< in WIN1251
    std::optional<std::int64_t> price;      ///< in hundredths
};

/// Makes the table RANDOM_ROWS (NR, ID, PARENTID, KOD, NAME, PRICE) on a server anew; NR is the place in what
/// is returned.
[[nodiscard]] std::vector<RandomRow> makeRandomRows(const QString& server, Random& random, int count);

} // namespace test
