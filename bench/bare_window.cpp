// The least Qt program with a main window, an empty one: what the start of ours is compared with.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.showMaximized();
    return QApplication::exec();
}
