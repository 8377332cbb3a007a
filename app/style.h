// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QString>

namespace app {

/// Switches the whole program to the visual style held by the resource of that name (":/style/<name>").
/// Shows an error dialog and returns false when it cannot be read.
bool trySetStyle(const QString& name);

/// How skinned controls are drawn.
struct Skin {
    QString name;
    QColor separator;
    int separatorInset = 0; ///< pixels left free above and below a separator
    QColor inactiveText;
};

/// The skin held by the resource of that name (":/skin/<name>"). Throws base::ResourceError when it cannot be
/// read.
[[nodiscard]] Skin loadSkin(const QString& name);

} // namespace app
