// SPDX-License-Identifier: MIT

#include "base/file_name.h"

#include <algorithm>

namespace base {

bool isPathDelimiter(QChar character) {
#ifndef Q_OS_WIN
    if (character == u'/') {
        return true;
    }
#endif
    return character == u'\\' || character == u':';
}

QString withExtension(const QString& name, const QString& extension) {
    const auto last = std::ranges::find_if(name.crbegin(), name.crend(), [](QChar character) {
        return character == u'.' || isPathDelimiter(character);
    });
    if (last == name.crend() || *last != u'.') {
        return name + extension;
    }
    return name.left(name.crend() - last - 1) + extension;
}

QString folderOf(const QString& name) {
    const auto last = std::ranges::find_if(name.crbegin(), name.crend(), isPathDelimiter);
    return name.left(name.crend() - last);
}

} // namespace base
