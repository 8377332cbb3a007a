#include "export/office_lock.h"

#include <QDir>
#include <QFileInfo>
#include <QSysInfo>

#include <algorithm>

namespace exporter {

namespace {

/// The machine that a lock file names: its fields are the user's name, the account, the host, and more.
QString hostOf(const QString& lockFile) {
    constexpr qsizetype hostField = 2;
    constexpr qint64 longestLock = 4096;
    QFile file(lockFile);
    const QByteArray lock = file.open(QIODevice::ReadOnly) ? file.read(longestLock) : QByteArray();
    return QString::fromUtf8(lock).section(u',', hostField, hostField);
}

/// Whether an office program of the account that owns the lock file runs on this machine.
bool officeRunsFor(const QFileInfo& lockFile) {
    const QFileInfoList processes = QDir(QStringLiteral("/proc")).entryInfoList(QDir::Dirs);
    return std::ranges::any_of(processes, [&lockFile](const QFileInfo& process) {
        QFile name(process.filePath() + QStringLiteral("/comm"));
        return process.ownerId() == lockFile.ownerId() && name.open(QIODevice::ReadOnly) &&
               name.readAll().trimmed() == "soffice.bin";
    });
}

} // namespace

std::optional<QString> officeLockOf(const QString& fileName) {
    const QFileInfo document(fileName);
    const QFileInfo lock(document.dir(), QStringLiteral(".~lock.%1#").arg(document.fileName()));
    if (!lock.exists()) {
        return std::nullopt;
    }
    // What runs on other machines cannot be seen; there the lock counts.
    const QString host = hostOf(lock.filePath());
    const bool here = host.isEmpty() || host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0;
    return here && !officeRunsFor(lock) ? std::nullopt : std::optional(lock.filePath());
}

} // namespace exporter
