// SPDX-License-Identifier: MIT

#include "ui/form.h"

#include <QScopeGuard>

namespace ui {

Form::Form(const QString& name) {
    setObjectName(name);
    forms_.push_back(this);
}

Form::~Form() {
    std::erase(forms_, this);
}

void Form::closeForm() {
    bool canClose = true;
    FormCloseQuery(canClose);
    if (!canClose) {
        return;
    }
    CloseAction action = CloseAction::None;
    const auto obey = qScopeGuard([&] {
        if (action == CloseAction::Free) {
            deleteLater();
        }
    });
    FormClose(action);
}

std::vector<Form*> Form::all() {
    return forms_;
}

} // namespace ui
