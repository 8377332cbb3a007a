#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace ui {

/// A dialog for choosing one existing file; the file must exist and its path be valid.
class OpenDialog final : public QObject {
    Q_OBJECT

public:
    OpenDialog(const QString& name, const QString& title, const QString& fileName, QObject* parent);

    [[nodiscard]] const QString& title() const { return title_; }
    [[nodiscard]] const QString& fileName() const { return fileName_; }

    /// Shows the dialog; true when a file was chosen, which fileName() then gives.
    bool execute(QWidget* parent);

private:
    QString title_;
    QString fileName_;
};

} // namespace ui
