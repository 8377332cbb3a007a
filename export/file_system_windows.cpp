// SPDX-License-Identifier: MIT

#include "base/error.h"
#include "export/file_system.h"

#include <QDir>
#include <QThread>

#include <algorithm>
#include <string>

#include <io.h>
#include <qt_windows.h>

namespace exporter {

namespace {

constexpr int longestChain = 63; // of links that the system itself follows
constexpr int replacingAttempts = 20;
constexpr unsigned long replacingPause = 100; // milliseconds

/// The form of a path that may be longer than 260 characters.
std::wstring longForm(const QString& path) {
    const QString native = QDir::toNativeSeparators(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    const QString prefix = QStringLiteral("\\\\?\\");
    return (native.startsWith(QStringLiteral("\\\\")) ? prefix + QStringLiteral("UNC") + native.sliced(1)
                                                      : prefix + native)
        .toStdWString();
}

/// Whether what other programs do with a file rules out this access while these may go on with what they
/// share.
bool isRuledOut(const QString& path, DWORD access, DWORD shared) {
    const HANDLE file = CreateFileW(longForm(path).c_str(), access, shared, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(file);
        return false;
    }
    return GetLastError() == ERROR_SHARING_VIOLATION;
}

base::Error openElsewhere() {
    return base::Error(QStringLiteral("файл открыт в другой программе; закройте его там"));
}

} // namespace

QFileInfo behindLinks(const QString& target) {
    // A colon would make the file a hidden part of another one.
    const QString name = target.sliced(std::max(target.lastIndexOf(u'/'), target.lastIndexOf(u'\\')) + 1);
    if (std::ranges::any_of(
            name, [](QChar letter) { return letter < u' ' || QStringView(u"<>:\"|?*").contains(letter); })) {
        throw base::Error(QStringLiteral("имя содержит знаки, недопустимые в именах файлов"));
    }
    QFileInfo file(target);
    if (file.isDir()) {
        throw base::Error(QStringLiteral("это имя занято папкой"));
    }
    for (int links = 0; file.isSymbolicLink(); ++links) {
        const QString next = file.symLinkTarget();
        if (links == longestChain || next.isEmpty()) {
            throw base::Error(qt_error_string(ERROR_CANT_RESOLVE_FILENAME));
        }
        file = QFileInfo(next);
    }
    return file;
}

void checkClosed(const QFileInfo& document) {
    // Virus scanners and the like leave room for this, and are gone when it comes to replacing.
    if (isRuledOut(document.filePath(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE)) {
        throw openElsewhere();
    }
}

bool isHeldHere(const QFileInfo&) {
    // A program of this machine that has the document open does not share it.
    return false;
}

void flush(const QFile& file) {
    if (!FlushFileBuffers(reinterpret_cast<HANDLE>(_get_osfhandle(file.handle())))) {
        throw base::Error(qt_error_string(static_cast<int>(GetLastError())));
    }
}

void replace(const QFile& file, const QFileInfo& target) {
    const std::wstring from = longForm(file.fileName());
    const std::wstring to = longForm(target.filePath());
    DWORD error = ERROR_SUCCESS;
    for (int attempt = 0; attempt < replacingAttempts; ++attempt) {
        if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
            return;
        }
        error = GetLastError();
        if (error != ERROR_ACCESS_DENIED && error != ERROR_SHARING_VIOLATION) {
            break;
        }
        // Programs that look at every new file hold it for a moment.
        QThread::msleep(replacingPause);
    }
    // The name of an open file is refused like one without the right to it.
    if (isRuledOut(target.filePath(), GENERIC_READ, 0)) {
        throw openElsewhere();
    }
    throw base::Error(qt_error_string(static_cast<int>(error)));
}

QString noRoomReason() {
    return qt_error_string(ERROR_DISK_FULL);
}

} // namespace exporter
