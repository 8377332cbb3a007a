// SPDX-License-Identifier: MIT

#include "base/decimal.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(Decimal, IsWrittenDigitForDigit) {
    using Limits = std::numeric_limits<std::int64_t>;
    EXPECT_EQ(base::decimalText(845, 2, '.'), "8.45");
    EXPECT_EQ(base::decimalText(-5, 2, '.'), "-0.05");
    EXPECT_EQ(base::decimalText(0, 4, '.'), "0.0000");
    EXPECT_EQ(base::decimalText(-120, 0, '.'), "-120");
    EXPECT_EQ(base::decimalText(Limits::max(), 18, '.'), "9.223372036854775807");
    EXPECT_EQ(base::decimalText(Limits::min(), 4, '.'), "-922337203685477.5808");
    EXPECT_EQ(base::decimalText(1, 18, '.'), "0.000000000000000001");
}

} // namespace
