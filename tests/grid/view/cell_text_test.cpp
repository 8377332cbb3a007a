#include "grid/view/cell_text.h"
#include "support/printing.h"

#include <QFontMetrics>

#include <gtest/gtest.h>

namespace grid {

TEST(CellText, BreaksBetweenWordsAndAfterTheHyphensOfACode) {
    const QFont font;
    const int line = cellText::height("8,45", 500, font);
    for (const char* word : {"8.45", "-92233720368547758,08", "01.1.01.01", ""}) {
        EXPECT_EQ(cellText::height(word, 30, font), line) << word;
    }
    EXPECT_GT(cellText::height("Щебень из гравия", 60, font), line);
    EXPECT_GT(cellText::height("а\nб", 500, font), line);
    EXPECT_TRUE(cellText::isCut("01.1.01.01", 30, font));
    const QString code = "01.1.01.01-0001";
    const int half = QFontMetrics(font).horizontalAdvance("01.1.01.01-") + 2 * cellText::horizontalPadding;
    const int twoLines = line + QFontMetrics(font).height();
    EXPECT_EQ(cellText::height(code, half, font), twoLines);
    EXPECT_FALSE(cellText::isCut(code, half, font));
    EXPECT_EQ(cellText::height(code, 2 * half, font), line);
    EXPECT_EQ(cellText::height(code, 30, font), twoLines);
    EXPECT_TRUE(cellText::isCut(code, 30, font));
    EXPECT_FALSE(cellText::isCut("Щебень из гравия", 90, font));
}

} // namespace grid
