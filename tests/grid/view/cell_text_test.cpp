#include "grid/view/cell_text.h"
#include "support/printing.h"

#include <QFontMetrics>

#include <gtest/gtest.h>

namespace grid {

TEST(CellText, BreaksBetweenWordsAndAfterTheHyphensOfACode) {
    const QFont font;
    const int line = cellTextHeight("8,45", 500, font);
    for (const char* word : {"8.45", "-92233720368547758,08", "01.1.01.01", ""}) {
        EXPECT_EQ(cellTextHeight(word, 30, font), line) << word;
    }
    EXPECT_GT(cellTextHeight("Щебень из гравия", 60, font), line);
    EXPECT_GT(cellTextHeight("а\nб", 500, font), line);
    EXPECT_TRUE(isCellTextCut("01.1.01.01", 30, font));
    const QString code = "01.1.01.01-0001";
    const int half = QFontMetrics(font).horizontalAdvance("01.1.01.01-") + 2 * cellTextPaddingX;
    const int twoLines = line + QFontMetrics(font).height();
    EXPECT_EQ(cellTextHeight(code, half, font), twoLines);
    EXPECT_FALSE(isCellTextCut(code, half, font));
    EXPECT_EQ(cellTextHeight(code, 2 * half, font), line);
    EXPECT_EQ(cellTextHeight(code, 30, font), twoLines);
    EXPECT_TRUE(isCellTextCut(code, 30, font));
    EXPECT_FALSE(isCellTextCut("Щебень из гравия", 90, font));
}

} // namespace grid
