// SPDX-License-Identifier: MIT

#include "ui/fonts.h"

#include "support/printing.h"

#include <QFile>
#include <QFontDatabase>
#include <QFontInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TEST(FontsTest, ComeFromTheProgramsOwnFolderWhereTheMachineHasNone) {
    const QTemporaryDir folder;
    ui::addFontsOf(folder.filePath("none"));
    ui::addFontsOf(folder.path());
    ASSERT_FALSE(QFontDatabase::hasFamily("Carlito")) << "ctest hides the machine's fonts from this test";

    for (const char* file : {"crosextra/Carlito-Regular.ttf", "crosextra/Carlito-Bold.ttf",
                             "dejavu/DejaVuSansCondensed.ttf", "dejavu/DejaVuSansCondensed-Bold.ttf"}) {
        const QString source = QStringLiteral("/usr/share/fonts/truetype/") + file;
        ASSERT_TRUE(QFile::copy(source, folder.filePath(source.section('/', -1)))) << file;
    }
    ui::addFontsOf(folder.path());
    for (const bool isBold : {false, true}) {
        const QFontInfo grid(ui::pixelFont("Calibri", 16, isBold));
        EXPECT_EQ(grid.family(), "Carlito");
        EXPECT_EQ(grid.bold(), isBold);
        const QFontInfo bars(ui::fixedTextFont("Tahoma", 13, isBold));
        EXPECT_EQ(bars.family(), "DejaVu Sans Condensed");
        EXPECT_EQ(bars.bold(), isBold);
    }
}

} // namespace
