// SPDX-License-Identifier: MIT

#include "base/file_name.h"
#include "base/program_place.h"
#include "support/printing.h"

#include <QDir>

#include <gtest/gtest.h>

namespace {

TEST(FileName, AreCutAtTheLastPointOrDelimiter) {
    const QString folder = QDir::toNativeSeparators("/opt/v1.2/");
    EXPECT_EQ(base::withExtension(folder + "Респ. Коми202403", ".xlsx"), folder + "Респ.xlsx");
    EXPECT_EQ(base::withExtension(folder + "Москва", ".xlsx"), folder + "Москва.xlsx");
    EXPECT_EQ(base::withExtension("D:\\a.b:name", ".log"), "D:\\a.b:name.log");
    EXPECT_EQ(base::withExtension("name", ".log"), "name.log");
    EXPECT_EQ(base::withExtension(".", ".log"), ".log");
    EXPECT_EQ(base::folderOf(folder + "name"), folder);
    EXPECT_TRUE(base::programFolder().endsWith(QDir::separator()));
}

} // namespace
