#include "ui/open_dialog.h"

namespace ui {

OpenDialog::OpenDialog(const QString& name, const QString& title, const QString& fileName, QObject* parent)
    : QObject(parent), title_(title), fileName_(fileName) {
    setObjectName(name);
}

} // namespace ui
