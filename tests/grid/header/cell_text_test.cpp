// SPDX-License-Identifier: MIT

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
    EXPECT_EQ(linesOf("01.1.01.01.1.01", widthOf("01.1.01.")), 2) << "after a point";
    EXPECT_EQ(linesOf("000-0000-00", widthOf("000-00")), 3) << "nowhere else";
    EXPECT_EQ(linesOf("01.1.01.01-0001", 500), 1);
    EXPECT_EQ(linesOf("fifififififi", widthOf("fififi")), 2) << "letters that the font joins";
    EXPECT_FALSE(isCellTextCut("01.1.01.01-0001", 40, font));
}

TEST(CellText, MarksEachPlaceOnItsLine) {
    const QString text = "кабель медный 2,5";
    const QFontMetrics metrics{QFont()};
    QImage image(metrics.horizontalAdvance("кабель медный") + 4 * cellTextPaddingX, 3 * metrics.height(),
                 QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    const std::vector<TextRange> marks = {{0, 3}, {7, 11}, {16, 17}};
    drawCellText(painter, image.rect(), text, Qt::AlignLeft, marks);
    // Stretches of the marks' colour in the topmost pixels of a line.
    const auto marksOfLine = [&](int line) {
        int count = 0;
        const int y = cellTextPaddingY + line * metrics.height();
        for (int x = 1; x < image.width(); ++x) {
            const auto isMarked = [&](int place) { return image.pixelColor(place, y).blue() < 128; };
            count += isMarked(x) && !isMarked(x - 1) ? 1 : 0;
        }
        return count;
    };
    EXPECT_EQ(marksOfLine(0), 2);
    EXPECT_EQ(marksOfLine(1), 1);
}

} // namespace grid
