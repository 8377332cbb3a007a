// SPDX-License-Identifier: MIT

#include "grid/text/number_condition.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

using grid::NumberCondition;

namespace {

constexpr auto least = std::numeric_limits<std::int64_t>::min();
constexpr auto greatest = std::numeric_limits<std::int64_t>::max();

NumberCondition condition(const QString& text) {
    const auto reading = NumberCondition::read(text);
    EXPECT_EQ(reading.mistake, "") << text.toStdString();
    return reading.condition.value_or(NumberCondition());
}

} // namespace

TEST(NumberCondition, ComparesNumbersToTheLastDigit) {
    struct Case {
        const char* text;
        std::int64_t units;
        int digits;
        bool holds;
    };
    const std::array cases{
        Case{">1000", 100'000, 2, false},
        Case{"<=0,05", 5, 2, true},
        // More digits than the column has.
        Case{"=12,501", 1250, 2, false},
        Case{">12,499999999999999999999", 1250, 2, true},
        Case{">-0,001", 0, 2, true},
        Case{"<-0,001", -1, 2, true},
        Case{"=-0,0", 0, 0, true},
        // Beyond what 64 bits hold, and at their ends.
        Case{"<9223372036854775808", greatest, 0, true},
        Case{">=9223372036854775807", greatest, 0, true},
        Case{"=-9223372036854775808", least, 0, true},
        Case{">-9223372036854775808,1", least, 0, true},
        Case{"=-9,223372036854775808", least, 18, true},
        Case{">1000000000000000000000000", greatest, 2, false},
        // Ranges, and several that must all hold.
        Case{"1000 ~ 5000", 99'999, 2, false},
        Case{"-5~-1,5", -150, 2, true},
        Case{">10  <20 <>15", 1500, 2, false},
        Case{",8~007.", 700, 2, true},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(condition(each.text).forDigits(each.digits).holdsFor(each.units), each.holds)
            << each.text << " for " << each.units << " with " << each.digits;
    }
}

TEST(NumberCondition, ComparesTextsThatAreNumbers) {
    const NumberCondition range = condition("0,12~1.071");
    for (const char* const text : {"0,12", "1.0710", " 1 ", "0.120", "00,5"}) {
        EXPECT_TRUE(range.holdsFor(std::string_view(text))) << text;
    }
    for (const char* const text :
         {"1,0711", "0,1199", "-1", "1 000", "1,0.5", "0,5 т", "1e0", ",", "-", ""}) {
        EXPECT_FALSE(range.holdsFor(std::string_view(text))) << text;
    }
    EXPECT_FALSE(condition("<>5").holdsFor(std::string_view("пять")));
}

TEST(NumberCondition, SaysWhyATextIsNone) {
    struct Case {
        const char* text;
        const char* mistake;
    };
    const std::array cases{
        Case{">", "После «>» нужно число"},
        Case{"10~", "После «~» нужно число"},
        Case{">= <5", "После «>=» нужно число"},
        Case{"~10", "Перед «~» нужно число"},
        Case{">1 000", "Перед «000» нужен знак: > >= < <= = <> или ~"},
        Case{">1e3", "«1e3» — не число"},
        Case{"=1,5,5", "«1,5,5» — не число"},
        Case{"20~10", "«20» больше, чем «10»"},
        Case{"1~2~3", "Перед «~» нужно число"},
    };
    for (const Case& each : cases) {
        const auto reading = NumberCondition::read(each.text);
        EXPECT_FALSE(reading.condition) << each.text;
        EXPECT_EQ(reading.mistake, each.mistake);
        EXPECT_TRUE(NumberCondition::isMeantBy(each.text));
    }
    EXPECT_FALSE(NumberCondition::isMeantBy("-12,5 кг"));
    EXPECT_EQ(condition(">10 20~30.50").inWords(u','), "больше 10 и не меньше 20 и не больше 30,50");
}
