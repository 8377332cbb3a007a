// SPDX-License-Identifier: MIT

#include "app/program_icon.h"

#include "support/printing.h"

#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int sides[] = {16, 24, 32, 48, 64, 128, 256};

/// The greatest difference of a colour channel between two pictures of the same size.
int greatestDifference(const QImage& picture, const QImage& other) {
    // What is transparent has no colour to differ in.
    const QImage one = picture.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    const QImage two = other.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    EXPECT_EQ(one.size(), two.size());
    int greatest = 0;
    for (qsizetype byte = 0; byte < std::min(one.sizeInBytes(), two.sizeInBytes()); ++byte) {
        greatest = std::max(greatest, std::abs(one.constBits()[byte] - two.constBits()[byte]));
    }
    return greatest;
}

TEST(ProgramIconTest, IsSharpInEverySize) {
    const QIcon icon = app::programIcon();
    for (const int side : sides) {
        const QImage image = icon.pixmap(side, side).toImage();
        ASSERT_EQ(image.size(), QSize(side, side));
        EXPECT_EQ(image.pixelColor(0, 0).alpha() < 255, true) << "round corners at " << side;
        // Away from the corners every pixel has one of the icon's colours, none lies between two of them.
        const int corner = side / 4;
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                const bool isInCorner =
                    std::min(x, side - 1 - x) < corner && std::min(y, side - 1 - y) < corner;
                const QString color = image.pixelColor(x, y).name(QColor::HexArgb);
                ASSERT_TRUE(isInCorner || color == "#ff2f5f8f" || color == "#ffffc04d" ||
                            color == "#ffffffff")
                    << color.toStdString() << " at " << x << ", " << y << " of " << side;
            }
        }
    }
}

TEST(ProgramIconTest, IsWhatTheDesktopsFilesShow) {
    const QIcon icon = app::programIcon();
    QFile icoFile(TARVELO_SOURCE_DIR "/resources/tarvelo.ico");
    ASSERT_TRUE(icoFile.open(QIODevice::ReadOnly));
    const QByteArray ico = icoFile.readAll();
    for (const int side : sides) {
        const QString name = QStringLiteral(TARVELO_SOURCE_DIR "/resources/icon/tarvelo-%1.png").arg(side);
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        const QByteArray png = file.readAll();
        // Each program rounds the corners in its own way.
        EXPECT_LE(greatestDifference(QImage::fromData(png), icon.pixmap(side, side).toImage()), 48)
            << name.toStdString() << "; run scripts/icons";
        EXPECT_TRUE(ico.contains(png)) << "the icon for Windows lacks " << side << "; run scripts/icons";
    }
}

} // namespace
