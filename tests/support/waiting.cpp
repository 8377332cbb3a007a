#include "support/waiting.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>

namespace test {

void onNextDialog(const std::function<void(QDialog& dialog)>& act) {
    auto* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
        if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            timer->stop();
            timer->deleteLater();
            act(*dialog);
        }
    });
    timer->start(5);
}

void acceptNextMessage(QString& text) {
    onNextDialog([&text](QDialog& dialog) {
        text = qobject_cast<QMessageBox*>(&dialog)->text();
        dialog.accept();
    });
}

} // namespace test
