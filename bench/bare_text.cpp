// SPDX-License-Identifier: MIT

#include "bench/bare_text.h"

#include "base/win1251.h"

#include <array>

namespace bench {

std::string folded(std::string_view bytes) {
    static const auto table = [] {
        std::array<char, 256> small{};
        for (std::size_t byte = 0; byte < small.size(); ++byte) {
            const QChar character =
                QChar(base::win1251::characters[static_cast<unsigned char>(byte)]).toLower();
            const QByteArray encoded = base::win1251::encode(QStringView(&character, 1));
            small[byte] = encoded.front();
        }
        return small;
    }();
    std::string text(bytes);
    for (char& byte : text) {
        byte = table[static_cast<unsigned char>(byte)];
    }
    return text;
}

int countContaining(const db::RowStore& rows, int field, const QString& text) {
    const std::string sought = folded(base::win1251::encode(text).toStdString());
    int count = 0;
    for (int row = 0; row < rows.rowCount(); ++row) {
        count += folded(rows.string(row, field)).find(sought) != std::string::npos ? 1 : 0;
    }
    return count;
}

} // namespace bench
