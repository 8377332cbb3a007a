// SPDX-License-Identifier: MIT

#include "app/key_help.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

namespace app {

namespace {

/// A key with what it does; a heading has no key.
struct KeyLine {
    QStringView key;
    QStringView does;
};

constexpr KeyLine keyLines[]{
    {u"", u"Программа"},
    {u"Alt, затем Enter", u"открыть базу данных"},
    {u"Alt+подчёркнутая цифра", u"открыть издание каталога"},
    {u"F5", u"прочитать каталоги региона и периода ещё раз"},
    {u"Ctrl+Tab, Ctrl+Shift+Tab", u"следующая и предыдущая страница"},
    {u"Tab, Shift+Tab", u"следующий и предыдущий элемент окна"},
    {u"F1", u"эта справка"},
    {u"", u"Таблица и дерево"},
    {u"Стрелки, Page Up, Page Down", u"перейти к строке или столбцу"},
    {u"Home, End", u"в первую и в последнюю строку"},
    {u"Shift или Ctrl+Shift с этими клавишами", u"выделить строки"},
    {u"Ctrl+A", u"выделить все строки"},
    {u"Ctrl+C", u"скопировать выделенные строки"},
    {u"Ctrl+Shift+C", u"скопировать ячейку"},
    {u"Shift+F10 или клавиша меню", u"меню ячейки и её столбца"},
    {u"Пробел", u"выделить строку или снять её выделение"},
    {u"Ctrl+↑, Ctrl+↓", u"перейти к строке, не меняя выделения"},
    {u"Alt+Page Up, Alt+Page Down", u"сортировать столбец по возрастанию, по убыванию"},
    {u"Alt+Backspace", u"не сортировать"},
    {u"Двойной щелчок по краю заголовка", u"ширина по содержимому"},
    {u"Ctrl+F", u"найти слова в любом порядке; слова в кавычках ищутся вместе; Esc закрывает поиск"},
    {u"F3, Shift+F3", u"следующее и предыдущее найденное"},
    {u"", u"Только таблица"},
    {u"Enter, Shift+Enter в строке поиска", u"следующее и предыдущее найденное"},
    {u"Alt+↓", u"фильтр столбца"},
    {u"↓, Пробел, Enter, Esc в фильтре", u"к значениям, отметить значение, применить, отказаться"},
    {u"Shift+щелчок по заголовку", u"сортировать ещё и по этому столбцу"},
    {u"Ctrl+щелчок по заголовку", u"не сортировать по этому столбцу"},
    {u"", u"Только дерево"},
    {u"Enter или ↓ в строке поиска", u"к первому найденному узлу"},
    {u"Буквы", u"перейти к узлу, который с них начинается"},
    {u"+, −, *", u"раскрыть узел, свернуть его, раскрыть со всеми вложенными"},
    {u"→, ←", u"раскрыть узел или войти в него; свернуть его или выйти"},
};

QString page() {
    QString text = QStringLiteral("<table cellspacing=0 cellpadding=3>");
    for (const KeyLine& line : keyLines) {
        text += line.key.isEmpty()
                    ? QStringLiteral("<tr><td colspan=2><b>%1</b></td></tr>").arg(line.does)
                    : QStringLiteral("<tr><td style='white-space:nowrap'>%1&nbsp;&nbsp;</td><td>%2</td></tr>")
                          .arg(line.key, line.does);
    }
    return text + QStringLiteral("</table>");
}

} // namespace

void showKeyHelp(QWidget* parent) {
    QDialog dialog(parent);
    dialog.setWindowTitle(QStringLiteral("Клавиши"));
    auto* const label = new QLabel(page());
    label->setMargin(8);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setAccessibleName(dialog.windowTitle());
    auto* const area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(label);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* const layout = new QVBoxLayout(&dialog);
    layout->addWidget(area);
    layout->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    const QSize whole = label->sizeHint() + QSize(area->verticalScrollBar()->sizeHint().width(), 2);
    area->setMinimumSize(whole.boundedTo(dialog.screen()->availableSize() * 9 / 10));
    dialog.exec();
}

} // namespace app
