#include "ui/open_dialog.h"

#include <QFileDialog>

namespace ui {

OpenDialog::OpenDialog(const QString& name, const QString& title, const QString& fileName, QObject* parent)
    : QObject(parent), title_(title), fileName_(fileName) {
    setObjectName(name);
}

bool OpenDialog::execute(QWidget* parent) {
    const QString chosen = QFileDialog::getOpenFileName(parent, title_, fileName_);
    if (!chosen.isEmpty()) {
        fileName_ = chosen;
    }
    return !chosen.isEmpty();
}

} // namespace ui
