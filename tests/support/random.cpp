// SPDX-License-Identifier: MIT

#include "support/random.h"

#include "base/decimal.h"
#include "base/win1251.h"
#include "support/firebird_server.h"

#include <array>
#include <limits>

namespace test {

namespace {

constexpr int longestText = 1000;

/// Words that differ by case and by ё, numbers, and what tables, formulas and XML are written with.
constexpr QStringView pieces[]{
    u"Бетон",   u"БЕТОН",  u"бетон",   u"ель",  u"ЁЛЬ",  u"Ёлка",    u"елка", u"кабель", u"Ґрунт", u"Њива",
    u"steel",   u"STEEL",  u"М400",    u" ",    u"  ",   u"\u00A0",  u"\t",   u"\n",     u"\r\n",  u"\r",
    u"\"",      u"\"\"",   u"'",       u"=1+1", u"@",    u"_x0041_", u"_x",   u"<td>",   u"&amp;", u"]]>",
    u"140х266", u"37х415", u"01.1.01", u"2,5",  u"2,45", u"0,12",    u"007",  u"7",      u",",     u".",
    u"№",       u"°C",     u"—",       u"±",    u"ґ",    u"\u0098",  u"\x1F", u"\x7F",
};
constexpr const char* numbers[]{"-12,5", "-12,50", "-7", "-140", " 1,5 ", "1.50",
                                "12,5",  "0012,5", "0",  "-0,0", ".5"};

QString literal(const std::optional<std::int64_t>& units, int fractionDigits) {
    return units ? u'\'' + QString::fromStdString(base::decimalText(*units, fractionDigits, '.')) + u'\''
                 : QStringLiteral("null");
}

} // namespace

std::vector<std::uint32_t> seeds() {
    bool isSet = false;
    const unsigned seed = qEnvironmentVariable("TARVELO_SEED").toUInt(&isSet);
    return isSet ? std::vector{seed} : std::vector<std::uint32_t>{1, 2, 3};
}

std::int64_t Random::number() {
    using Limits = std::numeric_limits<std::int64_t>;
    constexpr std::array special{Limits::min(), Limits::max(), std::int64_t{999'999'999'999'999},
                                 std::int64_t{1'000'000'000'000'000}};
    switch (below(8)) {
    case 0:
        return oneOf(special);
    case 1:
        return static_cast<std::int64_t>(std::uint64_t{engine_()} << 32 | engine_()) >> below(64);
    default:
        return below(4000) - 2000;
    }
}

QByteArray Random::text() {
    QByteArray bytes;
    switch (below(10)) {
    case 0:
        return oneOf(numbers);
    case 1:
        for (int left = oneIn(4) ? longestText : below(12); left > 0; --left) {
            bytes += static_cast<char>(below(256));
        }
        break;
    default:
        for (int left = oneIn(20) ? longestText : 1 + below(6); left > 0; --left) {
            bytes += base::win1251::encode(oneOf(pieces));
        }
    }
    // Nothing says where a text that begins like a negative number stands among those.
    return (bytes.startsWith('-') ? bytes.replace(0, 1, "+") : bytes).left(longestText);
}

std::vector<RandomRow> makeRandomRows(const QString& server, Random& random, int count) {
    QString sql =
        QStringLiteral("recreate table RANDOM_ROWS (NR integer, ID bigint, PARENTID bigint, KOD integer, "
                       "NAME varchar(1000), PRICE numeric(18,2)); commit;\n");
    std::vector<RandomRow> rows(static_cast<std::size_t>(count));
    for (int nr = 0; nr < count; ++nr) {
        const auto maybe = [&](auto value) { return random.oneIn(10) ? std::nullopt : std::optional(value); };
        RandomRow& row = rows[static_cast<std::size_t>(nr)];
        row.id = maybe(random.oneIn(20) ? random.number() : random.below(count));
        row.parent = maybe(random.oneIn(20) ? random.number() : random.below(count));
        row.kod = maybe(static_cast<std::int64_t>(static_cast<std::int32_t>(random.number())));
        row.name = maybe(random.oneIn(10) ? QByteArray() : random.text());
        row.price = maybe(random.number());
        const QString name =
            row.name ? QStringLiteral("_WIN1251 x'%1'").arg(QString::fromLatin1(row.name->toHex()))
                     : QStringLiteral("null");
        sql += QStringLiteral("insert into RANDOM_ROWS values (%1, %2, %3, %4, %5, %6);\n")
                   .arg(QString::number(nr), literal(row.id, 0), literal(row.parent, 0), literal(row.kod, 0),
                        name, literal(row.price, 2));
    }
    runSql(server, sql + QStringLiteral("commit;\n"));
    return rows;
}

} // namespace test
