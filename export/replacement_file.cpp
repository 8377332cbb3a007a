#include "export/replacement_file.h"

#include "export/export_error.h"
#include "export/office_lock.h"

#include <QCryptographicHash>
#include <QFileInfo>

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

QString fileName(const std::filesystem::path& path) {
#ifdef Q_OS_WIN
    return QString::fromStdWString(path.generic_wstring());
#else
    return QFile::decodeName(path.c_str());
#endif
}

/// Where a chain of symbolic links ends, whether there is a file or not.
QString behindLinks(const QString& target) {
    std::filesystem::path path = systemPath(target);
    std::error_code error;
    // A chain that leads back into itself has no status.
    if (std::filesystem::status(path, error).type() == std::filesystem::file_type::none) {
        return target;
    }
    while (std::filesystem::is_symlink(path, error)) {
        path = path.parent_path() / std::filesystem::read_symlink(path);
    }
    return fileName(path);
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
      place_(behindLinks(target)),
      lock_(temporaryName(place_, QStringLiteral(".lock"))),
      file_(temporaryName(place_, QStringLiteral(".tmp"))) {
    checkTarget();
    checkUse();
    lock();
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        fail(file_.errorString());
    }
}

ReplacementFile::~ReplacementFile() {
    if (!committed_ && lock_.isLocked()) {
        file_.remove();
    }
}

void ReplacementFile::checkTarget() const {
    if (target_.contains(QChar::Null) || QFile::decodeName(QFile::encodeName(target_)) != target_) {
        fail(QStringLiteral("имя содержит знаки, недопустимые в именах файлов"));
    }
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(systemPath(target_), error);
    if (std::filesystem::is_directory(status)) {
        fail(QStringLiteral("это имя занято папкой"));
    }
    if (status.type() == std::filesystem::file_type::none) {
        fail(qt_error_string(error.value()));
    }
    using std::filesystem::perms;
    // The superuser may write whatever the file says.
    const perms writers = perms::owner_write | perms::group_write | perms::others_write;
    if (std::filesystem::exists(status) &&
        ((status.permissions() & writers) == perms::none || !QFileInfo(target_).isWritable())) {
        fail(QStringLiteral("файл защищён от записи"));
    }
}

void ReplacementFile::checkUse() const {
    for (const QString& name : {target_, place_}) {
        if (const std::optional<QString> lock = officeLockOf(name)) {
            fail(
                QStringLiteral("файл открыт в другой программе; закройте его там, а если он нигде не открыт, "
                               "удалите «%1»")
                    .arg(*lock));
        }
    }
}

void ReplacementFile::lock() {
    // A lock is void only when the program that took it is gone, however long it has been writing.
    lock_.setStaleLockTime(0);
    if (lock_.tryLock(0)) {
        return;
    }
    if (lock_.error() != QLockFile::LockFailedError) {
        fail(reasonAgainstWriting(place_));
    }
    // A lock that a power cut left unreadable stays for good; the user must know what to remove.
    fail(QStringLiteral("этот файл сейчас записывает другая программа; если это не так, удалите «%1»")
             .arg(lock_.fileName()));
}

void ReplacementFile::append(QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        // A disk that fills up takes a part first and refuses the rest with its reason.
        const qint64 written = file_.write(bytes.data(), bytes.size());
        if (written <= 0) {
            fail(file_.errorString());
        }
        bytes = bytes.sliced(written);
    }
}

void ReplacementFile::overwrite(std::int64_t offset, QByteArrayView bytes) {
    const qint64 end = file_.pos();
    if (!file_.seek(offset)) {
        fail(file_.errorString());
    }
    append(bytes);
    if (!file_.seek(end)) {
        fail(file_.errorString());
    }
}

void ReplacementFile::flushToDisk() {
    // A network drive may report only now that it has no room.
    if (flush(file_.handle()) != 0) {
        fail(qt_error_string(errno));
    }
    file_.close();
    if (file_.error() != QFile::NoError) {
        fail(file_.errorString());
    }
}

/// Only then is the new name sure to outlive a power cut.
void ReplacementFile::flushFolder() const {
#ifndef Q_OS_WIN
    const QByteArray folder = QFile::encodeName(QFileInfo(place_).path());
    const int handle = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) {
        // A folder that one may write to but not read cannot be flushed.
        return;
    }
    const int error = fsync(handle) == 0 ? 0 : errno;
    close(handle);
    if (error != 0 && error != EINVAL) { // EINVAL: the file system does not offer it
        fail(qt_error_string(error));
    }
#endif
}

void ReplacementFile::commit() {
    flushToDisk();
    std::error_code error;
    std::filesystem::rename(systemPath(file_.fileName()), systemPath(place_), error);
    if (error) {
        fail(qt_error_string(error.value()));
    }
    committed_ = true;
    flushFolder();
}

void ReplacementFile::fail(const QString& reason) const {
    throw ExportError(target_, reason);
}

} // namespace exporter
