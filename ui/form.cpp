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
    if (!closeQuery()) {
        return;
    }
    // Freed by the event queue, so never before closed() has returned.
    deleteLater();
    closed();
}

std::vector<Form*> Form::all() {
    return forms_;
}

} // namespace ui
