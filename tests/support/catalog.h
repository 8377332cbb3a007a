// SPDX-License-Identifier: MIT

#pragma once

#include "data/data_modul.h"
#include "db/database_error.h"

#include <QString>

#include <cstdint>

namespace test {

/// Opens the ten datasets, those of the selection with this period and region.
void openAll(TDM& module, const QString& period, std::int32_t region);

/// The message of the db::DatabaseError that `action` raises; "nothing thrown" when it raises none.
template <typename Action>
QString errorOf(Action&& action) {
    try {
        action();
    } catch (const db::DatabaseError& error) {
        return error.message();
    }
    return QStringLiteral("nothing thrown");
}

} // namespace test
