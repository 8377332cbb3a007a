// SPDX-License-Identifier: MIT

#include "ui/fonts.h"

#include <QDir>
#include <QFontDatabase>
#include <QStringList>

namespace ui {

void installFontSubstitutes() {
    QFont::insertSubstitutions(QStringLiteral("Calibri"),
                               {QStringLiteral("Carlito"), QStringLiteral("DejaVu Sans")});
    QFont::insertSubstitutions(QStringLiteral("Tahoma"),
                               {QStringLiteral("DejaVu Sans Condensed"), QStringLiteral("DejaVu Sans")});
}

void addFontsOf(const QString& folder) {
    const QDir fonts(folder);
    for (const QString& file : fonts.entryList({QStringLiteral("*.ttf")}, QDir::Files, QDir::Name)) {
        QFontDatabase::addApplicationFont(fonts.filePath(file));
    }
}

QFont pixelFont(const QString& family, int pixelHeight, bool bold) {
    QFont font(family);
    font.setPixelSize(pixelHeight);
    font.setBold(bold);
    return font;
}

QFont fixedTextFont(const QString& family, int pixelHeight, bool bold) {
    QFont font = pixelFont(family, pixelHeight, bold);
    font.setStyleStrategy(QFont::NoFontMerging);
    return font;
}

} // namespace ui
