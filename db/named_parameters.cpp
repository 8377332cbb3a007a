// SPDX-License-Identifier: MIT

#include "db/named_parameters.h"

namespace db {

namespace {

bool isNameCharacter(QChar character) {
    return character.isLetterOrNumber() || character == u'_' || character == u'$';
}

/// Where the literal, quoted name or comment that begins at `start` ends; `start` itself if none does.
qsizetype endOfOpaqueText(const QString& sql, qsizetype start) {
    const auto after = [&](const QString& terminator, qsizetype from) {
        const auto found = sql.indexOf(terminator, from);
        return found < 0 ? sql.size() : found + terminator.size();
    };
    const QChar first = sql[start];
    if (first == u'\'' || first == u'"') {
        return after(QString(first), start + 1);
    }
    const QStringView two = QStringView(sql).sliced(start).left(2);
    if (two == u"--") {
        return after(QStringLiteral("\n"), start);
    }
    if (two == u"/*") {
        return after(QStringLiteral("*/"), start + 2);
    }
    return start;
}

} // namespace

PositionalStatement toPositional(const QString& sql) {
    PositionalStatement result;
    qsizetype position = 0;
    while (position < sql.size()) {
        const auto opaqueEnd = endOfOpaqueText(sql, position);
        if (opaqueEnd > position) {
            result.sql += QStringView(sql).sliced(position, opaqueEnd - position);
            position = opaqueEnd;
            continue;
        }
        auto nameEnd = position + 1;
        while (sql[position] == u':' && nameEnd < sql.size() && isNameCharacter(sql[nameEnd])) {
            ++nameEnd;
        }
        if (nameEnd == position + 1) {
            result.sql += sql[position];
        } else {
            result.sql += u'?';
            result.names += sql.sliced(position + 1, nameEnd - position - 1);
        }
        position = nameEnd;
    }
    return result;
}

} // namespace db
