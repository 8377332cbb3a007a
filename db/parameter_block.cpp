// SPDX-License-Identifier: MIT

#include "db/parameter_block.h"

#include "db/database_error.h"

#include <ibase.h>

#include <algorithm>
#include <array>
#include <limits>

namespace db {

namespace {

struct ItemCode {
    const char* name;
    unsigned char code;
};

constexpr std::array<ItemCode, 3> databaseItems{{
    {"password", isc_dpb_password},
    {"user_name", isc_dpb_user_name},
    {"lc_ctype", isc_dpb_lc_ctype},
}};

constexpr std::array<ItemCode, 4> transactionItems{{
    {"read", isc_tpb_read},
    {"nowait", isc_tpb_nowait},
    {"rec_version", isc_tpb_rec_version},
    {"read_committed", isc_tpb_read_committed},
}};

template <std::size_t count>
unsigned char codeOf(const QString& name, const std::array<ItemCode, count>& items) {
    const auto item = std::ranges::find(
        items, name, [](const ItemCode& candidate) { return QLatin1StringView(candidate.name); });
    if (item == items.end()) {
        throw DatabaseError(QStringLiteral("Неизвестный параметр соединения или транзакции «%1»").arg(name));
    }
    return item->code;
}

} // namespace

ParameterBlock databaseParameterBlock(const QStringList& lines) {
    ParameterBlock block{isc_dpb_version1};
    for (const QString& line : lines) {
        const auto equals = line.indexOf(u'=');
        const QString name = line.left(equals);
        const QByteArray value = equals < 0 ? QByteArray() : line.sliced(equals + 1).toLocal8Bit();
        if (value.size() > std::numeric_limits<unsigned char>::max()) {
            throw DatabaseError(QStringLiteral("Значение параметра «%1» длиннее 255 байт").arg(name));
        }
        block.push_back(codeOf(name, databaseItems));
        block.push_back(static_cast<unsigned char>(value.size()));
        block.insert(block.end(), value.begin(), value.end());
    }
    return block;
}

ParameterBlock transactionParameterBlock(const QStringList& words) {
    ParameterBlock block{isc_tpb_version3};
    for (const QString& word : words) {
        block.push_back(codeOf(word, transactionItems));
    }
    return block;
}

} // namespace db
