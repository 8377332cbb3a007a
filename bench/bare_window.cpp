// The least Qt program with a main window and a menu of one item: what the start of ours is compared with.
// The item is there because the first letter that a program draws loads the system's whole font
// configuration.
#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>

int main(int argc, char** argv) {
    QApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    const QApplication application(argc, argv);
    QMainWindow window;
    window.menuBar()->addAction(QStringLiteral("Открыть базу данных"));
    window.showMaximized();
    return QApplication::exec();
}
