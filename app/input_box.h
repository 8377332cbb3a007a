// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QWidget;

namespace app {

/// Asks for a line of text in a modal box. Returns the edited text on OK, `preset` on Cancel.
[[nodiscard]] QString inputBox(QWidget* parent, const QString& caption, const QString& prompt,
                               const QString& preset);

} // namespace app
