// SPDX-License-Identifier: MIT

#include "base/file_name.h"
#include "base/program_place.h"
#include "support/printing.h"

#include <gtest/gtest.h>

namespace {

TEST(FileName, AreCutAtTheLastPointOrDelimiter) {
    EXPECT_EQ(base::withExtension("/opt/v1.2/Респ. Коми202403", ".xlsx"), "/opt/v1.2/Респ.xlsx");
    EXPECT_EQ(base::withExtension("/opt/v1.2/Москва", ".xlsx"), "/opt/v1.2/Москва.xlsx");
    EXPECT_EQ(base::withExtension("D:\\a.b:name", ".log"), "D:\\a.b:name.log");
    EXPECT_EQ(base::withExtension("name", ".log"), "name.log");
    EXPECT_EQ(base::withExtension(".", ".log"), ".log");
    EXPECT_EQ(base::folderOf("/opt/v1.2/name"), "/opt/v1.2/");
    EXPECT_TRUE(base::programFolder().endsWith('/'));
}

} // namespace
