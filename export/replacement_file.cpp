#include "export/replacement_file.h"

#include "export/export_error.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <filesystem>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace exporter {

namespace {

/// A name beside the target. Short, because the longest possible target leaves no room for an addition.
QString temporaryName(const QString& target, const QString& extension) {
    const QFileInfo file(target);
    const QByteArray hash =
        QCryptographicHash::hash(file.fileName().toUtf8(), QCryptographicHash::Sha256).toHex();
    return QStringLiteral("%1/.tarvelo-%2%3")
        .arg(file.path(), QString::fromLatin1(hash.first(16)), extension);
}

std::filesystem::path systemPath(const QString& name) {
#ifdef Q_OS_WIN
    return name.toStdWString();
#else
    return QFile::encodeName(name).toStdString();
#endif
}

int flush(int handle) {
#ifdef Q_OS_WIN
    return _commit(handle);
#else
    return fsync(handle);
#endif
}

/// Why no file can be written beside the target.
QString reasonAgainstWriting(const QString& target) {
    QFile file(temporaryName(target, QStringLiteral(".probe")));
    if (!file.open(QIODevice::WriteOnly)) {
        return file.errorString();
    }
    file.remove();
    // Folder and rights are in order: what is left is the room for the file's contents.
    return qt_error_string(ENOSPC);
}

} // namespace

ReplacementFile::ReplacementFile(const QString& target)
    : target_(target),
      path_(temporaryName(target, QStringLiteral(".tmp"))),
      lock_(temporaryName(target, QStringLiteral(".lock"))) {
    checkTarget();
    lock();
}

ReplacementFile::~ReplacementFile() {
    if (!committed_) {
        QFile::remove(path_);
    }
}

void ReplacementFile::checkTarget() const {
    if (target_.contains(QChar::Null) || QFile::decodeName(QFile::encodeName(target_)) != target_) {
        throw ExportError(target_, QStringLiteral("имя содержит знаки, недопустимые в именах файлов"));
    }
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(systemPath(target_), error);
    if (std::filesystem::is_directory(status)) {
        throw ExportError(target_, QStringLiteral("это имя занято папкой"));
    }
    if (status.type() == std::filesystem::file_type::none) {
        throw ExportError(target_, qt_error_string(error.value()));
    }
}

void ReplacementFile::lock() {
    // A lock is void only when the program that took it is gone, however long it has been writing.
    lock_.setStaleLockTime(0);
    if (lock_.tryLock(0)) {
        return;
    }
    if (lock_.error() != QLockFile::LockFailedError) {
        throw ExportError(target_, reasonAgainstWriting(target_));
    }
    // A lock that a power cut left unreadable stays for good; the user must know what to remove.
    throw ExportError(
        target_, QStringLiteral("этот файл сейчас записывает другая программа; если это не так, удалите «%1»")
                     .arg(lock_.fileName()));
}

void ReplacementFile::flushToDisk() const {
    QFile file(path_);
    if (!file.open(QIODevice::ReadWrite)) {
        throw ExportError(target_, file.errorString());
    }
    // A network drive may report only now that it has no room.
    if (flush(file.handle()) != 0) {
        throw ExportError(target_, qt_error_string(errno));
    }
}

void ReplacementFile::commit() {
    flushToDisk();
    std::error_code error;
    std::filesystem::rename(systemPath(path_), systemPath(target_), error);
    if (error) {
        throw ExportError(target_, qt_error_string(error.value()));
    }
    committed_ = true;
}

} // namespace exporter
