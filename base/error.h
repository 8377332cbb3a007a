// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <exception>

namespace base {

/// Root of the program's own exceptions; carries the text that is shown to the user.
class Error : public std::exception {
public:
    explicit Error(QString message);

    /// The text for the user, in Russian or in the server's words.
    [[nodiscard]] const QString& message() const noexcept { return message_; }

    /// The message in UTF-8.
    [[nodiscard]] const char* what() const noexcept override { return utf8_.constData(); }

private:
    QString message_;
    QByteArray utf8_;
};

/// A file or folder could not be opened, written, renamed or entered.
class FileError : public Error {
public:
    /// `reason` is the system's own text, for instance QFile::errorString().
    FileError(const QString& action, const QString& path, const QString& reason);
};

/// A resource of the program is missing or not what it should be.
class ResourceError : public Error {
public:
    ResourceError(const QString& resource, const QString& reason);
};

/// The message of any exception: an Error's own text, otherwise what() read as UTF-8.
[[nodiscard]] QString messageOf(const std::exception& error);

/// The class name of an exception without its namespaces, as it stands in the error log.
[[nodiscard]] QString classNameOf(const std::exception& error);

} // namespace base
