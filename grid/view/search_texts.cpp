// SPDX-License-Identifier: MIT

#include "grid/view/search_texts.h"

namespace grid {

QString searchHint() {
    return QStringLiteral("Слова через пробел ищутся в любом порядке.\n"
                          "Слова в кавычках \"…\" ищутся вместе, как написаны.");
}

QString searchOutcome(std::optional<std::int64_t> number, std::int64_t count) {
    if (count == 0) {
        return QStringLiteral("Не найдено");
    }
    return number ? QStringLiteral("%1 из %2").arg(*number).arg(count)
                  : QStringLiteral("Найдено: %1").arg(count);
}

} // namespace grid
