// SPDX-License-Identifier: MIT

#include "base/program_place.h"

#include "base/file_name.h"

#include <QCoreApplication>
#include <QDir>

namespace base {

QString programPath() {
    return QDir::toNativeSeparators(QCoreApplication::applicationFilePath());
}

QString programFolder() {
    return folderOf(programPath());
}

} // namespace base
