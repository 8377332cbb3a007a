// SPDX-License-Identifier: MIT

#pragma once

#include <QDateTime>
#include <QFile>
#include <QString>

#include <exception>

namespace app {

/// The text file beside the executable, named like it with the extension ".log", that gets one line an error.
/// Open as long as the object lives.
class ErrorLog final {
public:
    /// Opens the file for appending, creates it if need be. Throws base::FileError.
    ErrorLog();

    /// The full path of the log file.
    [[nodiscard]] static QString path();

    /// Appends one line, ended by CR LF, in the system's default code page. Throws base::FileError.
    void append(const QString& line);

private:
    QFile file_;
};

/// Date, time, class name, message and component of an error, as they stand in a line of the log.
[[nodiscard]] QString errorLine(const QDateTime& time, const std::exception& error,
                                const QString& componentName);

/// Short date, a blank and long time by the user's regional settings; the date alone at exactly midnight.
[[nodiscard]] QString defaultDateTimeText(const QDateTime& time, const QLocale& locale);

} // namespace app
