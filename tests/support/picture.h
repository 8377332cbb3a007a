// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QWidget>

namespace test {

/// What a widget shows, asked in the widget's coordinates whatever the scale factor is.
class Picture {
public:
    explicit Picture(QWidget& widget) : Picture(widget.grab()) {}
    explicit Picture(const QPixmap& pixels);

    [[nodiscard]] const QImage& image() const { return image_; }
    /// The most frequent colour.
    [[nodiscard]] QString background(const QRect& area) const;
    /// The colour that differs most from the background, such as that of the strokes of a text.
    [[nodiscard]] QString foreground(const QRect& area) const;
    /// Where there is anything but background.
    [[nodiscard]] QRectF ink(const QRect& area) const;
    /// How much of an area has nearly that colour, in square pixels.
    [[nodiscard]] double amount(const QRect& area, const QColor& color) const;
    /// The same of dark colours.
    [[nodiscard]] double darkness(const QRect& area) const;

private:
    [[nodiscard]] QRect scaled(const QRect& area) const;
    template <typename Condition>
    [[nodiscard]] double amountWhere(const QRect& area, Condition condition) const;

    QImage image_;
    double scale_;
};

} // namespace test
