// SPDX-License-Identifier: MIT

#include "export/replacement_file.h"

#include "base/error.h"
#include "export/file_system.h"

#include <QCryptographicHash>
#include <QDir>
#include <QSysInfo>

namespace exporter {

namespace {

/// A name beside the target. Short, because the longest possible target leaves no room for an addition.
QString temporaryName(const QFileInfo& target, const QString& extension) {
    const QByteArray hash =
        QCryptographicHash::hash(target.fileName().toUtf8(), QCryptographicHash::Sha256).toHex();
    return QStringLiteral("%1/.tarvelo-%2%3")
        .arg(target.path(), QString::fromLatin1(hash.first(16)), extension);
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
    return isHeldHere(lock);
}

/// Throws when a document must not be replaced.
void checkUse(const QFileInfo& document) {
    if (isReadOnly(document)) {
        throw base::Error(QStringLiteral("файл защищён от записи"));
    }
    checkClosed(document);
    const QFileInfo lock(document.dir(), QStringLiteral(".~lock.%1#").arg(document.fileName()));
    if (lock.exists() && isHeld(lock)) {
        const auto reason =
            QStringLiteral("файл открыт в другой программе; закройте его там, а если он нигде "
                           "не открыт, удалите «%1»");
        throw base::Error(reason.arg(QDir::toNativeSeparators(lock.filePath())));
    }
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
                              .arg(QDir::toNativeSeparators(lock_.fileName())));
    }
    // The lock does not tell the reason, but a file in the same place does.
    if (!file_.open(QIODevice::WriteOnly)) {
        throw base::Error(file_.errorString());
    }
    file_.remove();
    // Folder and rights are in order: what is left is the room for the file's contents.
    throw base::Error(noRoomReason());
}

void ReplacementFile::commit() {
    // A network drive may report only now that it has no room.
    flush(file_);
    file_.close();
    replace(file_, place_);
}

} // namespace exporter
