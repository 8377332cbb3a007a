// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

namespace db {

/// A statement whose named parameters have been replaced by the positional mark that Firebird knows.
struct PositionalStatement {
    QString sql;       ///< the statement with "?" in place of every ":name"
    QStringList names; ///< the names in order of their marks; a name used twice stands twice
};

/// Replaces ":name" outside of literals, quoted names and comments.
[[nodiscard]] PositionalStatement toPositional(const QString& sql);

} // namespace db
