// SPDX-License-Identifier: MIT

#include "export/replacement_file.h"

#include "base/error.h"

#include <QCryptographicHash>
#include <QDir>
#include <QSysInfo>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace exporter {

namespace {

/// A name beside the target. Short, because the longest possible target leaves no room for an addition.
QString temporaryName(const QFileInfo& target, const QString& extension) {
    const QByteArray hash =
        QCryptographicHash::hash(target.fileName().toUtf8(), QCryptographicHash::Sha256).toHex();
    return QStringLiteral("%1/.tarvelo-%2%3")
        .arg(target.path(), QString::fromLatin1(hash.first(16)), extension);
}

/// Where a chain of symbolic links ends, whether there is a file or not. Throws when a file of that name can
/// be told to be impossible.
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

/// The superuser may write whatever the permissions of a file say.
bool isReadOnly(const QFileInfo& file) {
    const bool hasWriter = file.permissions() & (QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther);
    return file.exists() && !(hasWriter && file.isWritable());
}

/// Whether an office program that left this lock file beside its document may still have that open.
bool isHeld(const QFileInfo& lock) {
    QFile file(lock.filePath());
    const auto fields = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    // The user's name, the account, the host, and more. What runs on other machines cannot be seen.
    const QString host = fields.section(u',', 2, 2);
    if (!host.isEmpty() && host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) != 0) {
        return true;
    }
    const QFileInfoList processes = QDir(QStringLiteral("/proc")).entryInfoList(QDir::Dirs);
    return std::ranges::any_of(processes, [&lock](const QFileInfo& process) {
        QFile name(process.filePath() + QStringLiteral("/comm"));
        return process.ownerId() == lock.ownerId() && name.open(QIODevice::ReadOnly) &&
               name.readAll().trimmed() == "soffice.bin";
    });
}

/// Throws when a document must not be replaced.
void checkUse(const QFileInfo& document) {
    if (isReadOnly(document)) {
        throw base::Error(QStringLiteral("файл защищён от записи"));
    }
    const QFileInfo lock(document.dir(), QStringLiteral(".~lock.%1#").arg(document.fileName()));
    if (lock.exists() && isHeld(lock)) {
        const auto reason =
            QStringLiteral("файл открыт в другой программе; закройте его там, а если он нигде "
                           "не открыт, удалите «%1»");
        throw base::Error(reason.arg(lock.filePath()));
    }
}

/// Only then is a new name sure to outlive a power cut. By now the file is whole under it, so that a file
/// system which does not offer this is no failure.
void flushFolder([[maybe_unused]] const QString& folder) {
#ifndef Q_OS_WIN
    const int handle = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle >= 0) {
        fsync(handle);
        close(handle);
    }
#endif
}

bool flushFile(int handle) {
#ifdef Q_OS_WIN
    return _commit(handle) == 0;
#else
    return fsync(handle) == 0;
#endif
}

/// The reason why the new file could not take the target's place.
QString renamingReason(const std::error_code& error) {
#ifdef Q_OS_WIN
    // ERROR_ACCESS_DENIED and ERROR_SHARING_VIOLATION of winerror.h
    if (error.value() == 5 || error.value() == 32) {
        return QStringLiteral("файл открыт в другой программе; закройте его там");
    }
#endif
    return qt_error_string(error.value());
}

} // namespace

ReplacementFile::ReplacementFile(const QString& target)
    : place_(behindLinks(target)),
      lock_(temporaryName(place_, QStringLiteral(".lock"))),
      file_(temporaryName(place_, QStringLiteral(".tmp"))) {
    checkUse(QFileInfo(target));
    checkUse(place_);
    lock();
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        throw base::Error(file_.errorString());
    }
}

ReplacementFile::~ReplacementFile() {
    file_.remove();
}

void ReplacementFile::lock() {
    // A lock is void only when the program that took it is gone, however long it has been writing.
    lock_.setStaleLockTime(0);
    if (lock_.tryLock(0)) {
        return;
    }
    if (lock_.error() == QLockFile::LockFailedError) {
        // A lock that a power cut left unreadable stays for good; the user must know what to remove.
        throw base::Error(QStringLiteral("этот файл сейчас записывает другая программа; если это не так, "
                                         "удалите «%1»")
                              .arg(lock_.fileName()));
    }
    // The lock does not tell the reason, but a file in the same place does.
    if (!file_.open(QIODevice::WriteOnly)) {
        throw base::Error(file_.errorString());
    }
    file_.remove();
    // Folder and rights are in order: what is left is the room for the file's contents.
    throw base::Error(qt_error_string(ENOSPC));
}

void ReplacementFile::commit() {
    // A network drive may report only now that it has no room.
    if (!flushFile(file_.handle())) {
        throw base::Error(qt_error_string(errno));
    }
    file_.close();
    std::error_code error;
    std::filesystem::rename(file_.filesystemFileName(), place_.filesystemFilePath(), error);
    if (error) {
        throw base::Error(renamingReason(error));
    }
    flushFolder(place_.path());
}

} // namespace exporter
