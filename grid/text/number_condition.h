// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace grid {

/// A decimal number of any length as views of its digits: comparing is exact, whatever the lengths.
struct ExactNumber {
    bool negative = false;
    std::string_view whole;    ///< digits without leading zeros
    std::string_view fraction; ///< digits without trailing zeros

    /// The number that a text shows, with a point or a comma, blanks around it left aside; nothing when it is
    /// none. Valid as long as the text.
    [[nodiscard]] static std::optional<ExactNumber> read(std::string_view text);

    [[nodiscard]] std::strong_ordering operator<=>(const ExactNumber& other) const;
};

struct NumberRelation;
class UnitCondition;

/// What numbers must fulfil, as it is typed: ">1000", "<=12,5", "<>0", "1000~5000" (a range with both its
/// ends), or several of them, which must all hold.
class NumberCondition final {
public:
    /// What a text says: a condition, or in words why it is none.
    struct Reading;

    /// Whether a text is meant as a condition, well-formed or not.
    [[nodiscard]] static bool isMeantBy(const QString& text);
    [[nodiscard]] static Reading read(const QString& text);

    /// As it was typed.
    [[nodiscard]] const QString& text() const { return text_; }
    /// As a sentence goes on after the column's name: "больше 10 и меньше 20".
    [[nodiscard]] QString inWords(QChar decimalPoint) const;

    /// The same for numbers of so many fraction digits.
    [[nodiscard]] UnitCondition forDigits(int digits) const;
    /// Whether a text fulfils it; one that is no number never does.
    [[nodiscard]] bool holdsFor(std::string_view text) const;

private:
    class Reader;

    struct Comparison {
        const NumberRelation* relation = nullptr;
        QString boundText; ///< as it was typed
        bool negative;
        std::string whole;
        std::string fraction;

        [[nodiscard]] ExactNumber bound() const { return {negative, whole, fraction}; }
    };

    QString text_;
    std::vector<Comparison> comparisons_;
};

struct NumberCondition::Reading {
    std::optional<NumberCondition> condition;
    QString mistake; ///< empty when there is a condition
};

/// A number condition in units of the last digit, so that whole columns can be gone through. No less exact.
class UnitCondition final {
public:
    [[nodiscard]] bool holdsFor(std::int64_t units) const;

private:
    friend class NumberCondition;

    /// Where numbers begin to fulfil something; `first` counts only where any does.
    struct Threshold {
        bool isReachable = false;
        std::int64_t first = 0;

        [[nodiscard]] bool isReachedBy(std::int64_t units) const { return isReachable && units >= first; }
    };

    struct Comparison {
        const NumberRelation* relation = nullptr;
        Threshold notLess; ///< than the bound
        Threshold greater;
    };

    std::vector<Comparison> comparisons_;
};

} // namespace grid
