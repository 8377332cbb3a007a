// SPDX-License-Identifier: MIT

#include "base/error.h"

#include <algorithm>
#include <typeinfo>
#include <utility>

#if __has_include(<cxxabi.h>)
#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#endif

namespace base {

Error::Error(QString message) : message_(std::move(message)), utf8_(message_.toUtf8()) {}

FileError::FileError(const QString& action, const QString& path, const QString& reason)
    : Error(QStringLiteral("%1 «%2»: %3").arg(action, path, reason)) {}

ResourceError::ResourceError(const QString& resource, const QString& reason)
    : Error(QStringLiteral("Ресурс программы «%1»: %2").arg(resource, reason)) {}

QString messageOf(const std::exception& error) {
    if (const auto* own = dynamic_cast<const Error*>(&error)) {
        return own->message();
    }
    return QString::fromUtf8(error.what());
}

QString classNameOf(const std::exception& error) {
    const char* const mangled = typeid(error).name();
    QString name = QString::fromLatin1(mangled);
#if __has_include(<cxxabi.h>)
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> plain(
        abi::__cxa_demangle(mangled, nullptr, nullptr, &status), &std::free);
    if (status == 0) {
        name = QString::fromLatin1(plain.get());
    }
#endif
    // Other compilers write "class db::DatabaseError".
    const auto start = std::max(name.lastIndexOf(u':'), name.lastIndexOf(u' ')) + 1;
    return name.sliced(start);
}

} // namespace base
