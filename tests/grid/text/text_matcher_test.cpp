// SPDX-License-Identifier: MIT

#include "base/win1251.h"
#include "grid/text/text_matcher.h"
#include "support/printing.h"

#include <gtest/gtest.h>

namespace grid {
namespace {

/// `text` with what the words find in it between brackets.
QString marked(const char* words, const QString& text) {
    const std::string bytes = base::win1251::encode(text).toStdString();
    const TextMatcher matcher(QString::fromUtf8(words));
    const std::vector<TextRange> marks = matcher.marksIn(CellView(std::string_view(bytes)), 0);
    EXPECT_EQ(matcher.matches(CellView(std::string_view(bytes)), 0), !marks.empty() || matcher.isEmpty());
    QString result = text;
    for (auto mark = marks.rbegin(); mark != marks.rend(); ++mark) {
        result.insert(mark->end, u']').insert(mark->start, u'[');
    }
    return result;
}

} // namespace

TEST(TextMatcher, FindsWordsInAnyOrderAndMarksEachOccurrence) {
    EXPECT_EQ(marked("2,5 КАБ", "Кабель 2,5 для кабины"), "[Каб]ель [2,5] для [каб]ины");
    EXPECT_EQ(marked("  кабель\t медь ", "Кабель 2,5"), "Кабель 2,5");
    EXPECT_EQ(marked("абв бвг", "xабвгx"), "x[абвг]x") << "words that overlap";
    EXPECT_EQ(marked("аа", "ааааа"), "[аааа]а");
    EXPECT_EQ(marked("Ω кабель", "кабель"), "кабель") << "a letter that the code page lacks";
    EXPECT_EQ(marked(" \t", "а б"), "а б");
}

TEST(TextMatcher, KeepsTogetherWhatStandsInQuotationMarks) {
    EXPECT_EQ(marked("\"ель 2\" каб", "Кабель 2,5 ель"), "[Кабель 2],5 ель");
    EXPECT_EQ(marked("\"ель  2\"", "Кабель 2,5"), "Кабель 2,5");
    EXPECT_EQ(marked("\"ль 2,", "Кабель 2,5"), "Кабе[ль 2,]5") << "not closed yet";
    EXPECT_EQ(marked("1/2\"", "труба 1/2\" 1/2"), "труба [1/2\"] 1/2") << "inches";
    EXPECT_EQ(marked("\"1/2\" 1\"", "труба 1/2\" 1"), "труба 1/2\" 1") << "1/2, and 1 inch";
    EXPECT_EQ(marked("\"\"\"", "бетон \"М400\""), "бетон [\"]М400[\"]");
    EXPECT_EQ(marked("\"\" \"", "бетон"), "бетон");
}

TEST(TextMatcher, ReadsNumbersAsTheyAreShown) {
    const CellView price = std::int64_t{-1250};
    using Marks = std::vector<TextRange>;
    EXPECT_EQ(TextMatcher("2.5 -").marksIn(price, 2), Marks({{0, 1}, {2, 5}}));
    EXPECT_EQ(TextMatcher("2,50").marksIn(price, 2), Marks({{2, 6}}));
    EXPECT_FALSE(TextMatcher("2,5 руб").matches(price, 2));
    EXPECT_FALSE(TextMatcher("0").matches(CellView(), 2)) << "NULL";
}

} // namespace grid
