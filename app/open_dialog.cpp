#include "app/open_dialog.h"

namespace app {

OpenDialog::OpenDialog(const QString& name, const QString& title, const QString& fileName, QObject* parent)
    : QObject(parent), title_(title), fileName_(fileName) {
    setObjectName(name);
}

} // namespace app
