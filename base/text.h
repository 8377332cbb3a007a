#pragma once

#include <QString>

#include <string_view>

namespace base {

/// A text of a constant table as the framework's string.
[[nodiscard]] inline QString toQString(std::u16string_view text) {
    return QStringView(text).toString();
}

} // namespace base
