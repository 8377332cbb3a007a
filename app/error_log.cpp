// SPDX-License-Identifier: MIT

#include "app/error_log.h"

#include "base/error.h"
#include "base/file_name.h"
#include "base/program_place.h"

#include <QLocale>
#include <QRegularExpression>

namespace app {

ErrorLog::ErrorLog() : file_(path()) {
    if (!file_.open(QIODevice::Append)) {
        throw base::FileError(QStringLiteral("Не открывается журнал ошибок"), file_.fileName(),
                              file_.errorString());
    }
}

QString ErrorLog::path() {
    return base::withExtension(base::programPath(), QStringLiteral(".log"));
}

void ErrorLog::append(const QString& line) {
    const QByteArray bytes = line.toLocal8Bit() + "\r\n";
    if (file_.write(bytes) != bytes.size() || !file_.flush()) {
        throw base::FileError(QStringLiteral("Не записывается журнал ошибок"), file_.fileName(),
                              file_.errorString());
    }
}

QString errorLine(const QDateTime& time, const std::exception& error, const QString& componentName) {
    // The server words its messages in several lines; the log has one line an error.
    const QString message =
        base::messageOf(error).trimmed().split(QRegularExpression(QStringLiteral("[\\r\\n]+"))).join(u' ');
    return defaultDateTimeText(time, QLocale::system()) + u':' + base::classNameOf(error) + u':' + message +
           QStringLiteral(" Компонент ") + componentName;
}

QString defaultDateTimeText(const QDateTime& time, const QLocale& locale) {
    QString date = locale.toString(time.date(), QLocale::ShortFormat);
    if (time.time() == QTime(0, 0)) {
        return date;
    }
    // Qt ends the long time in the mark of the time zone, which the regional setting does not have.
    const QString format = locale.timeFormat(QLocale::LongFormat)
                               .remove(QRegularExpression(QStringLiteral("\\s*\\(?t+\\)?\\s*")));
    return date + u' ' + locale.toString(time.time(), format);
}

} // namespace app
