#include "ui/form.h"

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
    if (canClose) {
        // Freed by the event queue, so never before FormClose() has returned.
        deleteLater();
        FormClose();
    }
}

std::vector<Form*> Form::all() {
    return forms_;
}

} // namespace ui
