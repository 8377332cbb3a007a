#include "db/decimal.h"

#include <array>
#include <charconv>

namespace db {

QString decimalText(std::int64_t units, int digits, QChar decimalPoint) {
    const bool negative = units < 0;
    // Negating in unsigned arithmetic is defined for the smallest value too.
    const std::uint64_t magnitude =
        negative ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
    std::array<char, 20> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude).ptr;
    QString text = QString::fromLatin1(buffer.data(), end - buffer.data());
    if (digits > 0) {
        text = text.rightJustified(digits + 1, u'0');
        text.insert(text.size() - digits, decimalPoint);
    }
    if (negative) {
        text.prepend(u'-');
    }
    return text;
}

} // namespace db
