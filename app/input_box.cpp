// SPDX-License-Identifier: MIT

#include "app/input_box.h"

#include <QInputDialog>

namespace app {

namespace {

/// Leaves room for the caption, in pixels.
constexpr int minimumWidth = 320;

} // namespace

QString inputBox(QWidget* parent, const QString& caption, const QString& prompt, const QString& preset) {
    QInputDialog dialog(parent);
    dialog.setWindowTitle(caption);
    dialog.setLabelText(prompt);
    dialog.setTextValue(preset);
    dialog.resize(minimumWidth, dialog.sizeHint().height());
    return dialog.exec() == QDialog::Accepted ? dialog.textValue() : preset;
}

} // namespace app
