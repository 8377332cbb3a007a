// SPDX-License-Identifier: MIT

// The least Qt program with a main window and one word in it: what the start of ours is compared with. The
// word is there because the first letter that a program draws loads the system's whole font configuration.
#include <QApplication>
#include <QLabel>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.setCentralWidget(new QLabel(QStringLiteral("Tarvelo")));
    window.showMaximized();
    return QApplication::exec();
}
