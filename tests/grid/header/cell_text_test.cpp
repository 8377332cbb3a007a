#include "grid/header/cell_text.h"
#include "support/printing.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace grid {

TEST(CellText, BreaksWordsAndCodesButNeverANumber) {
    const QFont font;
    const QFontMetrics metrics(font);
    const int line = cellTextHeight("8,45", 500, font);
    const auto linesOf = [&](const char* text, int width) {
        return (cellTextHeight(text, width, font) - line) / metrics.height() + 1;
    };
    for (const char* number : {"8.45", "-92233720368547758,08", "-0,5"}) {
        EXPECT_EQ(linesOf(number, 20), 1) << number;
        EXPECT_TRUE(isCellTextCut(number, 20, font)) << number;
        EXPECT_FALSE(isCellTextCut(number, 500, font)) << number;
    }
    EXPECT_TRUE(isCellTextCut("1234567", 20, font, CellKind::Number));
    EXPECT_FALSE(isCellTextCut("7701234567", 40, font)) << "a code, which breaks";
    EXPECT_EQ(linesOf("", 20), 1);
    EXPECT_GT(linesOf("Щебень из гравия", 60), 1);
    EXPECT_EQ(linesOf("а\nб", 500), 2);

    const auto widthOf = [&](const char* part) {
        return metrics.horizontalAdvance(part) + 2 * cellTextPaddingX;
    };
    EXPECT_EQ(linesOf("01.1.01.01-0001", widthOf("01.1.01.01-")), 2) << "after the hyphen";
    EXPECT_EQ(linesOf("01.1.01.01-0001", widthOf("01.1.01.")), 2) << "after a point";
    EXPECT_EQ(linesOf("01.1.01.01-0001", 500), 1);
    EXPECT_EQ(linesOf("fifififi", widthOf("fifi")), 2) << "letters that the font joins";
    EXPECT_FALSE(isCellTextCut("01.1.01.01-0001", 40, font));
}

TEST(CellText, ShowsAnEllipsisForAllOfANumberThatDoesNotFit) {
    const auto drawn = [](const QString& text, int width) {
        QImage image(width, 40, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        drawCellText(painter, image.rect(), text, Qt::AlignRight);
        return image;
    };
    EXPECT_EQ(drawn("1234567,89", 40), drawn("12345678,90", 40));
    EXPECT_EQ(drawn("1234567,89", 40), drawn("…", 40));
    EXPECT_NE(drawn("1234567,89", 200), drawn("12345678,90", 200));
}

} // namespace grid
