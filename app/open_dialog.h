// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>

namespace app {

/// What a dialog for choosing one existing file is to show, and what it takes.
class OpenDialog final : public QObject {
    Q_OBJECT

public:
    enum Option : unsigned {
        HideReadOnly = 1U << 0, ///< no box for opening read-only
        PathMustExist = 1U << 1,
        FileMustExist = 1U << 2,
        ShareAware = 1U << 3, ///< another program may have the file open
        EnableSizing = 1U << 4,
    };
    Q_DECLARE_FLAGS(Options, Option)

    OpenDialog(const QString& name, const QString& title, const QString& fileName, Options options,
               QObject* parent)
        : QObject(parent), title_(title), fileName_(fileName), options_(options) {
        setObjectName(name);
    }

    [[nodiscard]] const QString& title() const { return title_; }
    [[nodiscard]] const QString& fileName() const { return fileName_; }
    [[nodiscard]] Options options() const { return options_; }

private:
    QString title_;
    QString fileName_;
    Options options_;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(OpenDialog::Options)

} // namespace app
