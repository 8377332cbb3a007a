#pragma once

#include <QObject>
#include <QString>

namespace app {

/// What a dialog for choosing one existing file is to show.
class OpenDialog final : public QObject {
    Q_OBJECT

public:
    OpenDialog(const QString& name, const QString& title, const QString& fileName, QObject* parent)
        : QObject(parent), title_(title), fileName_(fileName) {
        setObjectName(name);
    }

    [[nodiscard]] const QString& title() const { return title_; }
    [[nodiscard]] const QString& fileName() const { return fileName_; }

private:
    QString title_;
    QString fileName_;
};

} // namespace app
