// SPDX-License-Identifier: MIT

#pragma once

#include "db/field.h"

#include <QStringList>

#include <span>

namespace data {

/// Which rows of its table a catalog dataset reads, and in which order.
enum class QueryRows {
    ByName,      ///< all, by NAME ascending
    ByPeriod,    ///< all, by PERIOD descending
    OfSelection, ///< those of period :p1 and region :p2, by KOD ascending
    Whole,       ///< all, in the server's order
};

/// The query that a dataset starts with, one item a line.
[[nodiscard]] QStringList initialQuery(std::span<const db::FieldSpec> fields, QStringView table,
                                       QueryRows rows);

/// The two lines that read the same columns of period :p1 and region :p2 from an edition's table.
[[nodiscard]] QStringList editionQuery(std::span<const db::FieldSpec> fields, QStringView table);

} // namespace data
