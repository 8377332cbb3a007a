// SPDX-License-Identifier: MIT

#include "base/win1251.h"
#include "grid/text/collation.h"
#include "support/firebird_server.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace {

TEST(Collation, AgreesWithTheServerOnRussianLetters) {
    QString letters = QStringLiteral("Ё");
    for (const auto& [first, last] : {std::pair(u'0', u'9'), {u'A', u'Z'}, {u'А', u'Я'}}) {
        for (char16_t letter = first; letter <= last; ++letter) {
            letters += QChar(letter);
        }
    }
    QStringList rows;
    for (const QChar letter : letters) {
        rows.prepend(QStringLiteral("select '%1' as C from RDB$DATABASE").arg(letter));
    }
    const QString sorted =
        test::sqlValue(test::sampleServer,
                       QStringLiteral("select list(C, '') from (select C from (select cast(C as varchar(1) "
                                      "character set WIN1251) collate PXW_CYRL as C from (%1)) order by C)")
                           .arg(rows.join(QStringLiteral(" union all "))));
    std::ranges::sort(letters, [](QChar left, QChar right) {
        const auto bytes = [](QChar letter) { return base::win1251::encode(QString(letter)).toStdString(); };
        return grid::collation::compare(bytes(left), bytes(right)) < 0;
    });
    EXPECT_TRUE(sorted.contains(letters)) << sorted.toStdString();
}

} // namespace
