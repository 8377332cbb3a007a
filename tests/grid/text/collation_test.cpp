// SPDX-License-Identifier: MIT

#include "base/win1251.h"
#include "grid/text/collation.h"
#include "support/printing.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using grid::collation::compare;
using grid::collation::Needle;

namespace {

std::string bytes(const QString& text) {
    return base::win1251::encode(text).toStdString();
}

} // namespace

TEST(Collation, TakesNumbersByValue) {
    const std::vector<QStringList> lists{
        {"-1000", "-20", "-3,5", "-3,14", "-3", "0", "0,12", "0,5", "0,50", "1", "01", "001", "1,0710",
         "1,5"},
        {"9", "10", "10,5", "99999999", "100000000", "999999999", "1000000000", "1000000000000"},
        {"10х2", "10х10", "37х415", "140х266"},
        {"01.1.01", "01.2.01", "01.10.01"},
        {"труба 2,5х10", "труба 9 мм", "труба 10 мм", "труба 10,25х3"}};
    for (const QStringList& ascending : lists) {
        for (qsizetype index = 1; index < ascending.size(); ++index) {
            const std::string one = bytes(ascending[index - 1]);
            const std::string next = bytes(ascending[index]);
            EXPECT_LT(compare(one, next), 0) << ascending[index].toStdString();
            EXPECT_GT(compare(next, one), 0) << ascending[index].toStdString();
        }
    }
}

TEST(Needle, TakesLongAndEmptyTexts) {
    const std::string longText(1000, 'x');
    EXPECT_EQ(Needle(longText).findIn("y" + longText), 1U);
    EXPECT_EQ(Needle(longText + "z").findIn(longText + longText), std::string::npos);
    EXPECT_TRUE(Needle("").isEmpty());
    EXPECT_EQ(Needle("").findIn(longText), 0U);
    // What the code page cannot express is found in no text.
    EXPECT_EQ(Needle(bytes(QStringLiteral("漢"))).findIn(bytes(QStringLiteral("? любой текст"))),
              std::string::npos);
}
