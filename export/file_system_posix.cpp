// SPDX-License-Identifier: MIT

#include "base/error.h"
#include "export/file_system.h"

#include <QDir>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace exporter {

namespace {

/// Only then is a new name sure to outlive a power cut. By now the file is whole under it, so that a file
/// system which does not offer this is no failure.
void flushFolder(const QString& folder) {
    const int handle = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle >= 0) {
        fsync(handle);
        close(handle);
    }
}

} // namespace

QFileInfo behindLinks(const QString& target) {
    if (target.contains(QChar::Null) || QFile::decodeName(QFile::encodeName(target)) != target) {
        throw base::Error(QStringLiteral("имя содержит знаки, недопустимые в именах файлов"));
    }
    std::filesystem::path path = QFileInfo(target).filesystemFilePath();
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (std::filesystem::is_directory(status)) {
        throw base::Error(QStringLiteral("это имя занято папкой"));
    }
    // Among others a chain that leads back into itself.
    if (!std::filesystem::status_known(status)) {
        throw base::Error(qt_error_string(error.value()));
    }
    while (std::filesystem::is_symlink(path, error)) {
        path = path.parent_path() / std::filesystem::read_symlink(path, error);
    }
    return QFileInfo(path);
}

void checkClosed(const QFileInfo&) {
    // An open file may be replaced: who has it open goes on reading the old one.
}

bool isHeldHere(const QFileInfo& lock) {
    const QFileInfoList processes = QDir(QStringLiteral("/proc")).entryInfoList(QDir::Dirs);
    return std::ranges::any_of(processes, [&lock](const QFileInfo& process) {
        QFile name(process.filePath() + QStringLiteral("/comm"));
        return process.ownerId() == lock.ownerId() && name.open(QIODevice::ReadOnly) &&
               name.readAll().trimmed() == "soffice.bin";
    });
}

void flush(const QFile& file) {
    if (fsync(file.handle()) != 0) {
        throw base::Error(qt_error_string(errno));
    }
}

void replace(const QFile& file, const QFileInfo& target) {
    std::error_code error;
    std::filesystem::rename(file.filesystemFileName(), target.filesystemFilePath(), error);
    if (error) {
        throw base::Error(qt_error_string(error.value()));
    }
    flushFolder(target.path());
}

QString noRoomReason() {
    return qt_error_string(ENOSPC);
}

} // namespace exporter
