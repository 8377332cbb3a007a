// SPDX-License-Identifier: MIT

// Number conditions of any text, and well-formed ones beside plain arithmetic.

#include "base/decimal.h"
#include "fuzz/fuzzing.h"
#include "grid/text/number_condition.h"

#include <array>

namespace {

using fuzz::check;
using fuzz::Input;

constexpr int mostDigits = 18;

/// A number in 10^-18.
using Wide = base::WideInteger;

Wide scaled(std::int64_t units, int digits) {
    Wide value = units;
    for (int digit = digits; digit < mostDigits; ++digit) {
        value *= 10;
    }
    return value;
}

void checkAnyText(Input& input, std::int64_t units, int digits) {
    const QString text = fuzz::takeText(input);
    const auto reading = grid::NumberCondition::read(text);
    check(reading.condition.has_value() == reading.mistake.isEmpty());
    if (reading.condition) {
        check(reading.condition->inWords(u',').isEmpty() == text.trimmed().isEmpty());
        check(reading.condition->forDigits(digits).holdsFor(units) ==
              reading.condition->holdsFor(base::decimalText(units, digits, '.')));
    }
}

struct Relation {
    const char* sign;
    bool (*holds)(Wide number, Wide bound);
};

constexpr std::array relations{
    Relation{">", [](Wide number, Wide bound) { return number > bound; }},
    Relation{">=", [](Wide number, Wide bound) { return number >= bound; }},
    Relation{"<", [](Wide number, Wide bound) { return number < bound; }},
    Relation{"<=", [](Wide number, Wide bound) { return number <= bound; }},
    Relation{"=", [](Wide number, Wide bound) { return number == bound; }},
    Relation{"<>", [](Wide number, Wide bound) { return number != bound; }},
};

void checkArithmetic(Input& input, std::int64_t units, int digits) {
    std::string text;
    bool expected = true;
    for (int count = input.ConsumeIntegralInRange(1, 3); count > 0; --count) {
        const Relation& relation = input.PickValueInArray(relations);
        const int boundDigits = input.ConsumeIntegralInRange(0, mostDigits);
        // Near the number, where an error would show.
        const bool isNear = boundDigits == digits && input.ConsumeBool();
        const std::int64_t bound = isNear ? units : input.ConsumeIntegral<std::int64_t>();
        text += relation.sign + base::decimalText(bound, boundDigits, input.ConsumeBool() ? ',' : '.') + ' ';
        expected = expected && relation.holds(scaled(units, digits), scaled(bound, boundDigits));
    }
    const auto reading = grid::NumberCondition::read(QString::fromStdString(text));
    check(reading.condition.has_value());
    check(reading.condition->forDigits(digits).holdsFor(units) == expected);
    check(reading.condition->holdsFor(base::decimalText(units, digits, ',')) == expected);
}

} // namespace

void fuzz::run(Input& input) {
    const int digits = input.ConsumeIntegralInRange(0, mostDigits);
    const auto units = input.ConsumeIntegral<std::int64_t>();
    checkArithmetic(input, units, digits);
    checkAnyText(input, units, digits);
}
