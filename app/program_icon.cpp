// SPDX-License-Identifier: MIT

#include "app/program_icon.h"

#include "base/error.h"

#include <QFile>
#include <QPainter>
#include <QXmlStreamReader>

#include <vector>

namespace app {

namespace {

struct Rectangle {
    QRectF area;
    double radius;
    QColor color;
};

/// A drawing of nothing but rectangles on a square.
struct Drawing {
    double side = 0;
    std::vector<Rectangle> rectangles;
};

Drawing readDrawing(const QString& resource) {
    QFile file(resource);
    if (!file.open(QIODevice::ReadOnly)) {
        throw base::ResourceError(resource, file.errorString());
    }
    Drawing drawing;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        const QXmlStreamAttributes attributes = xml.attributes();
        const auto number = [&](const char* name) {
            return attributes.value(QLatin1StringView(name)).toDouble();
        };
        if (xml.name() == u"svg") {
            drawing.side = number("width");
        } else if (xml.name() == u"rect") {
            drawing.rectangles.push_back({{number("x"), number("y"), number("width"), number("height")},
                                          number("rx"),
                                          QColor(attributes.value(QStringLiteral("fill")))});
        } else if (xml.name() != u"title") {
            xml.raiseError(QStringLiteral("неизвестный элемент «%1»").arg(xml.name()));
        }
    }
    if (xml.hasError()) {
        throw base::ResourceError(resource, xml.errorString());
    }
    return drawing;
}

QPixmap paint(const Drawing& drawing, int side) {
    QPixmap pixels(side, side);
    pixels.fill(Qt::transparent);
    QPainter painter(&pixels);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / drawing.side, side / drawing.side);
    painter.setPen(Qt::NoPen);
    for (const Rectangle& rectangle : drawing.rectangles) {
        painter.setBrush(rectangle.color);
        painter.drawRoundedRect(rectangle.area, rectangle.radius, rectangle.radius);
    }
    return pixels;
}

} // namespace

QIcon programIcon() {
    const Drawing drawing = readDrawing(QStringLiteral(":/icon/tarvelo"));
    QIcon icon(paint(readDrawing(QStringLiteral(":/icon/tarvelo-24")), 24));
    for (const int side : {16, 32, 48, 64, 128, 256}) {
        icon.addPixmap(paint(drawing, side));
    }
    return icon;
}

} // namespace app
