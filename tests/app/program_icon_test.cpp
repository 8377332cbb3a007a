// SPDX-License-Identifier: MIT

#include "app/program_icon.h"

#include "support/printing.h"

#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace {

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

TEST(ProgramIconTest, IsWhatTheDesktopsFilesShow) {
    const QIcon icon = app::programIcon();
    QFile icoFile(TARVELO_SOURCE_DIR "/resources/tarvelo.ico");
    ASSERT_TRUE(icoFile.open(QIODevice::ReadOnly));
    const QByteArray ico = icoFile.readAll();
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
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
