// SPDX-License-Identifier: MIT

#include "support/picture.h"

#include <QPixmap>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <ranges>

namespace test {

namespace {

QString nameOf(QRgb color) {
    return QColor(color).name();
}

int difference(QRgb first, QRgb second) {
    return std::abs(qRed(first) - qRed(second)) + std::abs(qGreen(first) - qGreen(second)) +
           std::abs(qBlue(first) - qBlue(second));
}

template <typename Visit>
void visitPixels(const QImage& image, const QRect& area, Visit visit) {
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            visit(x, y, image.pixel(x, y));
        }
    }
}

QRgb mostFrequent(const QImage& image, const QRect& area) {
    std::map<QRgb, int> counts;
    visitPixels(image, area, [&](int, int, QRgb color) { ++counts[color]; });
    return counts.empty()
               ? 0
               : std::ranges::max_element(counts, {}, [](const auto& each) { return each.second; })->first;
}

} // namespace

Picture::Picture(const QPixmap& pixels)
    : image_(pixels.toImage().convertToFormat(QImage::Format_RGB32)), scale_(pixels.devicePixelRatio()) {}

/// The device's pixels that a painter fills for an area.
QRect Picture::scaled(const QRect& area) const {
    const auto scale = [this](int value) { return qRound(value * scale_); };
    return QRect(QPoint(scale(area.left()), scale(area.top())),
                 QPoint(scale(area.right() + 1) - 1, scale(area.bottom() + 1) - 1)) &
           image_.rect();
}

QString Picture::background(const QRect& area) const {
    return nameOf(mostFrequent(image_, scaled(area)));
}

QString Picture::foreground(const QRect& area) const {
    const QRgb background = mostFrequent(image_, scaled(area));
    QRgb strongest = background;
    visitPixels(image_, scaled(area), [&](int, int, QRgb color) {
        strongest = difference(color, background) > difference(strongest, background) ? color : strongest;
    });
    return nameOf(strongest);
}

QRectF Picture::ink(const QRect& area) const {
    const QRgb background = mostFrequent(image_, scaled(area));
    QRect found;
    visitPixels(image_, scaled(area), [&](int x, int y, QRgb color) {
        found = color == background ? found : found | QRect(x, y, 1, 1);
    });
    return {found.x() / scale_, found.y() / scale_, found.width() / scale_, found.height() / scale_};
}

template <typename Condition>
double Picture::amountWhere(const QRect& area, Condition condition) const {
    int count = 0;
    visitPixels(image_, scaled(area), [&](int, int, QRgb color) { count += condition(color) ? 1 : 0; });
    return count / (scale_ * scale_);
}

double Picture::amount(const QRect& area, const QColor& color) const {
    constexpr int nearEnough = 24;
    return amountWhere(area, [&](QRgb each) { return difference(each, color.rgb()) < nearEnough; });
}

double Picture::darkness(const QRect& area) const {
    constexpr int darkest = 110;
    return amountWhere(area, [](QRgb each) { return qGray(each) < darkest; });
}

} // namespace test
