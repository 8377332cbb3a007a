// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

#include <vector>

namespace ui {

/// What becomes of a window that has been asked to close.
enum class CloseAction { None, Free };

/// A window that is shown inside another one and frees itself when it is closed.
class Form : public QWidget {
    Q_OBJECT

public:
    explicit Form(const QString& name);
    ~Form() override;

    /// Asks FormCloseQuery(), runs FormClose() and, where that says so, has the window freed once the running
    /// handler has returned. Exceptions of FormCloseQuery() leave the window open.
    void closeForm();

    /// All forms, in the order of their creation.
    [[nodiscard]] static std::vector<Form*> all();

    /// Asks whether the window may be closed.
    virtual void FormCloseQuery(bool& canClose) = 0;
    /// The window is closing; says what becomes of it, also when it throws.
    virtual void FormClose(CloseAction& action) = 0;

private:
    static inline std::vector<Form*> forms_;
};

} // namespace ui
