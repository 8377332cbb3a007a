// SPDX-License-Identifier: MIT

#include "data/catalog_queries.h"

namespace data {

namespace {

QStringList columnNames(std::span<const db::FieldSpec> fields) {
    QStringList names;
    for (const db::FieldSpec& field : fields) {
        names += field.column.toString();
    }
    return names;
}

QStringList tailOf(QueryRows rows) {
    switch (rows) {
    case QueryRows::ByName:
        return {QStringLiteral("Order by name")};
    case QueryRows::ByPeriod:
        return {QStringLiteral("ORDER BY PERIOD DESC")};
    case QueryRows::OfSelection:
        return {QStringLiteral("where per=:p1 and REGIONID=:p2"), QStringLiteral("order by KOD"),
                QStringLiteral("    ")};
    case QueryRows::Whole:
        break;
    }
    return {};
}

} // namespace

QStringList initialQuery(std::span<const db::FieldSpec> fields, QStringView table, QueryRows rows) {
    const QString indent = QStringLiteral("    ");
    QStringList lines{QStringLiteral("SELECT")};
    const QStringList names = columnNames(fields);
    for (const QString& name : names) {
        lines += indent + name + (&name == &names.last() ? QString() : QStringLiteral(","));
    }
    const QString trailing = rows == QueryRows::Whole ? QStringLiteral(" ") : QString();
    lines << QStringLiteral("FROM") << indent + table.toString() + trailing;
    return lines + tailOf(rows);
}

QStringList editionQuery(std::span<const db::FieldSpec> fields, QStringView table) {
    return {QStringLiteral("SELECT ") + columnNames(fields).join(u','),
            QStringLiteral("FROM %1 where per=:p1 and REGIONID=:p2 order by KOD").arg(QStringView(table))};
}

} // namespace data
