// SPDX-License-Identifier: MIT

#include "app/xpm_resource.h"

#include "base/error.h"

#include <QFile>

#include <vector>

namespace app {

namespace {

/// The quoted lines of an XPM file, which is C source of an array of them.
QList<QByteArray> quotedLines(const QByteArray& source) {
    QList<QByteArray> lines;
    for (const QByteArray& line : source.split('\n')) {
        const auto start = line.indexOf('"');
        const auto end = line.lastIndexOf('"');
        if (start < end) {
            lines += line.sliced(start + 1, end - start - 1);
        }
    }
    return lines;
}

} // namespace

QImage readXpmResource(const QString& resource) {
    QFile file(resource);
    if (!file.open(QIODevice::ReadOnly)) {
        throw base::ResourceError(resource, file.errorString());
    }
    const QList<QByteArray> lines = quotedLines(file.readAll());
    std::vector<const char*> pointers;
    for (const QByteArray& line : lines) {
        pointers.push_back(line.constData());
    }
    QImage image = pointers.empty() ? QImage() : QImage(pointers.data());
    if (image.isNull()) {
        throw base::ResourceError(resource, QStringLiteral("это не изображение XPM"));
    }
    return image;
}

} // namespace app
