// SPDX-License-Identifier: MIT

#include "random/user.h"

#include "base/program_place.h"
#include "browser/ter_form.h"
#include "data/selection.h"
#include "grid/header/fitted_header.h"
#include "grid/rows/table_model.h"
#include "grid/table/grid.h"
#include "grid/table/table_footer.h"
#include "grid/table/table_view.h"
#include "grid/tree/tree_list.h"
#include "grid/tree/tree_view.h"
#include "ui/screen_cursor.h"

#include <QContextMenuEvent>
#include <QDir>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>

namespace test {

User::User(std::uint32_t seed, const QString& catalog, Server reliability, int lifetime)
    : random_(seed),
      reliability_(reliability),
      server_(QStringLiteral("127.0.0.13"), catalog, lifetime),
      window_(server_.address()) {
    dialogs_.callOnTimeout([this] { answerDialog(); });
    dialogs_.start(1);
}

void User::act() {
    try {
        take(randomAction());
    } catch (const std::exception& exception) {
        ADD_FAILURE() << "escaped: " << exception.what();
    }
    expectOrder();
}

void User::startOver() {
    close();
    window_.form().resize(1366, 768);
    window_.choose("Action1");
    QCoreApplication::processEvents();
    expectOrder();
}

QString User::lastActions() const {
    return actions_.join('\n');
}

const User::Action& User::randomAction() {
    const int total = std::accumulate(actions.begin(), actions.end(), 0,
                                      [](int sum, const Action& each) { return sum + each.weight; });
    int left = random_.below(total);
    return *std::ranges::find_if(actions, [&](const Action& each) { return (left -= each.weight) < 0; });
}

void User::take(const Action& action) {
    constexpr qsizetype remembered = 60;
    actions_ = actions_.last(std::min(actions_.size(), remembered)) << QString(action.name);
    ++taken_;
    changes_ += action.isChange ? 1 : 0;
    if (action.needsBrowser && !TERForm) {
        chooseEdition();
    } else {
        (this->*action.take)();
    }
    QCoreApplication::processEvents();
    while (QWidget* const popup = QApplication::activePopupWidget()) {
        popup->close();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (trouble_ > 0 && --trouble_ == 0) {
        recover();
    }
}

void User::answerDialog() {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (auto* const input = qobject_cast<QInputDialog*>(dialog)) {
        input->setTextValue(server_.address());
    } else if (const auto* const message = qobject_cast<QMessageBox*>(dialog)) {
        messages_ += message->text().remove(QChar(0x200B));
    }
    if (dialog) {
        dialog->accept();
    }
}

/// Remembers what an action is about.
template <typename Detail>
const Detail& User::noted(const Detail& detail) {
    actions_.back() += QStringLiteral(" %1").arg(detail);
    return detail;
}

grid::RowView& User::view() {
    auto* const page = TERForm->cxPageControl1->currentWidget();
    const auto views = page->findChildren<grid::RowView*>();
    return *views.back();
}

int User::randomColumn() {
    return random_.oneOf(view().header().visibleColumns());
}

void User::press(QWidget& widget, QKeyCombination key) {
    QApplication::setActiveWindow(&window_.form()); // which a dialog leaves inactive
    QTest::keyClick(&widget, key.key(), key.keyboardModifiers());
}

/// A part of what stands in some cell, or what stands in none.
QString User::randomText() {
    const QAbstractItemModel& model = *view().model();
    const int row = random_.below(model.rowCount() + 1);
    const QString cell = model.index(row, randomColumn()).data().toString();
    return noted(random_.oneIn(6) ? QStringLiteral("нет такого")
                                  : cell.mid(random_.below(8), 1 + random_.below(5)));
}

void User::chooseIn(QComboBox& selector, const QStringList& others) {
    if (random_.oneIn(3)) {
        type(selector, noted(random_.oneOf(others)));
    } else {
        selector.setCurrentIndex(noted(random_.below(selector.count())));
    }
}

void User::chooseRegion() {
    chooseIn(*TERForm->cxComboBox1, {"", "В", "Респ. Ком", "Респ. Коми", "З \\/:*?\"<>|[]'", "Ω"});
}

void User::choosePeriod() {
    chooseIn(*TERForm->cxComboBox2, {"", "1", "20240", "202403", "2024031", "ж"});
}
void User::turnPage() {
    TERForm->cxPageControl1->setCurrentIndex(noted(random_.below(TERForm->cxPageControl1->count())));
}

void User::readAgain() {
    press(*TERForm->cxComboBox1->lineEdit(), Qt::Key_F5);
}
void User::resize() {
    window_.form().resize(noted(300 + random_.below(1500)), 200 + random_.below(1000));
}

void User::pressKey() {
    static const QStringList keys =
        QStringLiteral(
            "Up Down Left Right PgUp PgDown Home End Space F3 + - * 1 Shift+Down Shift+End Shift+F3 "
            "Ctrl+A Ctrl+C Ctrl+Down Ctrl+Space Ctrl+Tab Ctrl+Shift+C Alt+Down Shift+F10 Alt+PgUp "
            "Alt+PgDown Alt+Backspace")
            .split(' ');
    const QKeySequence key(noted(random_.oneOf(keys)));
    view().setFocus();
    press(view(), key[0]);
}

void User::clickHeader() {
    static constexpr std::array<Qt::KeyboardModifiers, 3> modifiers{Qt::NoModifier, Qt::ShiftModifier,
                                                                    Qt::ControlModifier};
    QHeaderView& header = view().header();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, random_.oneOf(modifiers),
                      {header.sectionViewportPosition(noted(randomColumn())) + 12, header.height() / 2});
}

void User::arrangeColumns() {
    QHeaderView& header = view().header();
    if (random_.oneIn(2)) {
        header.moveSection(header.visualIndex(noted(randomColumn())),
                           header.visualIndex(noted(randomColumn())));
    } else {
        header.resizeSection(noted(randomColumn()), noted(random_.below(600)));
    }
}

/// Runs one of the commands of the menu of a row or a header, with all that hang beneath it.
void User::chooseFromMenu() {
    QWidget& place = random_.oneIn(2) ? *view().viewport() : *view().header().viewport();
    if (place.size().isEmpty()) {
        return; // in a small window
    }
    const QPoint point(random_.below(place.width()), random_.below(place.height()));
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, place.mapToGlobal(point));
    QApplication::sendEvent(&place, &event);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QList<QAction*> commands = menu->findChildren<QAction*>();
    commands.removeIf(
        [](QAction* command) { return !command->isEnabled() || command->isSeparator() || command->menu(); });
    QAction* const command = random_.oneOf(commands);
    noted(command->text());
    menu->close();
    command->trigger();
}

void User::filter() {
    auto* const table = qobject_cast<grid::TableView*>(&view());
    if (!table) {
        return;
    }
    table->openFilter(noted(randomColumn()));
    QWidget* const popup = QApplication::activePopupWidget();
    if (!popup) {
        return; // of a column without a field
    }
    auto* const text = popup->findChild<QLineEdit*>("FilterText");
    text->setText(random_.oneIn(3) ? noted(QStringLiteral(">%1").arg(random_.below(500))) : randomText());
    auto& values = *popup->findChild<QListView*>("FilterValues");
    for (int left = random_.below(3); left > 0 && values.model()->rowCount() > 0; --left) {
        values.setFocus();
        values.setCurrentIndex(values.model()->index(random_.below(values.model()->rowCount()), 0));
        press(values, Qt::Key_Space);
    }
    press(*text, random_.oneIn(5) ? Qt::Key_Escape : Qt::Key_Return);
}

void User::clearFilter() {
    for (QPushButton* const button :
         TERForm->cxPageControl1->currentWidget()->findChildren<QPushButton*>("FilterBarClear")) {
        button->click();
    }
}

void User::find() {
    press(view(), Qt::CTRL | Qt::Key_F);
    auto* const text = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(text, nullptr);
    text->setText(randomText());
    for (int left = random_.below(4); left > 0; --left) {
        press(*text, random_.oneIn(2) ? QKeyCombination(Qt::Key_F3) : Qt::SHIFT | Qt::Key_F3);
    }
    press(*text, random_.oneIn(2) ? Qt::Key_Escape : Qt::Key_Return);
}

void User::chooseEdition() {
    static constexpr std::array editions{"Action1", "Action4", "Action7", "Action8"};
    window_.choose(noted(QString(random_.oneOf(editions))));
}

void User::exportTable() {
    QPushButton* const button = TERForm->cxPageControl1->currentWidget()
                                    ->findChildren<QPushButton*>(QRegularExpression("^Button\\d"))
                                    .value(0);
    if (!button) {
        return; // there is none beside the tree
    }
    QTest::mouseClick(button, Qt::LeftButton);
    QDir folder(base::programFolder());
    const QStringList files = folder.entryList({"   *", ".*"}, QDir::Files | QDir::Hidden);
    EXPECT_EQ(files.size(), messages_.contains("Выгрузка завершена") ? 1 : 0)
        << files.join('|').toStdString();
    for (const QString& file : files) {
        folder.remove(file);
    }
    const QString name = TERForm->cxComboBox1->currentText();
    refused_ = name.contains('/') || name.size() > 100;
}

void User::close() {
    if (window_.form().Tag != 0) { // otherwise it ends the program
        window_.choose("Action9");
    }
}

void User::connect() {
    const bool wasConnected = window_.module().pFIBDatabase1.isConnected();
    window_.form().N1->trigger();
    isReliable_ = isReliable_ || (!wasConnected && window_.module().pFIBDatabase1.isConnected());
}

/// The server ends, or only what it has open.
void User::makeTrouble() {
    if (reliability_ == Server::Reliable) {
        return;
    }
    recover();
    isReliable_ = wasReliable_ = false;
    bereaved_ = TERForm;
    trouble_ = 1 + random_.below(8);
    if (random_.oneIn(4)) {
        server_.kill();
        isDead_ = true;
    } else {
        runSql(server_.address(),
               "delete from MON$ATTACHMENTS where MON$ATTACHMENT_ID <> current_connection; commit;");
    }
}

void User::recover() {
    if (std::exchange(isDead_, false)) {
        server_.start();
    }
    for (int tries = 0; !isReliable_; ++tries) {
        ASSERT_LT(tries, 5) << "no connection";
        if (window_.module().pFIBDatabase1.isConnected()) {
            TERForm ? readAgain() : chooseEdition(); // tells that the connection is lost
        }
        connect();
    }
}

void User::expectOrder() {
    SCOPED_TRACE(taken_);
    expectNoOtherMessages();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    const auto browsers = window_.form().findChildren<TTERForm*>();
    EXPECT_EQ(browsers, TERForm ? QList{TERForm} : QList<TTERForm*>());
    if (!TERForm) {
        return;
    }
    EXPECT_EQ("   " + data::editionOf(window_.form().Tag).words.caption.toString(),
              TERForm->findChild<QLabel*>("cxLabel1")->text());
    EXPECT_EQ(ui::screenCursor(), ui::ScreenCursor::Default);
    expectShownIsCurrent();
    if (taken_ % 10 == 0 && isReliable_) {
        expectServerAgrees();
    }
}

/// What a lost connection or an impossible file makes of an action is told, and everything else succeeds.
void User::expectNoOtherMessages() {
    for (const QString& message : std::exchange(messages_, {})) {
        const bool isDone = message == "Выгрузка завершена";
        EXPECT_TRUE(isDone || !wasReliable_ || (refused_ && message.contains(".xlsx")))
            << message.toStdString();
        errors_ += isDone ? 0 : 1;
    }
    refused_ = false;
    wasReliable_ = isReliable_;
}

/// The footers count what is shown, and the current rows are those of the datasets.
void User::expectShownIsCurrent() {
    static const QRegularExpression shownCount("^(?:выделено \\d+ из )?(\\d+)");
    for (const grid::Grid* const each : TERForm->findChildren<grid::Grid*>()) {
        const grid::TableModel& model = each->view().tableModel();
        // What was announced, as the text itself is made at the moment it is asked for.
        const QString footer = each->findChild<grid::TableFooter*>()->accessibleName();
        EXPECT_EQ(shownCount.match(footer).captured(1),
                  each == TERForm->cxGrid2 ? QString() : QString::number(model.rowCount()))
            << footer.toStdString();
        EXPECT_EQ(each->view().currentRow(), model.rowOfDataSetRow(model.dataSet().currentRow()))
            << each->objectName().toStdString();
    }
    const grid::TreeView& tree = TERForm->cxDBTreeList1->view();
    EXPECT_EQ(tree.currentRow(), tree.rows().rowOf(tree.treeModel().dataSet().currentRow()));
}

void User::expectServerAgrees() {
    const data::Edition::Tables& tables = data::editionOf(window_.form().Tag).tables;
    QStringList counts, expected;
    // Over a new connection a browser prepares its queries only when it reads again.
    if (bereaved_ != TERForm) {
        for (const char* table : {"MON$STATEMENTS", "MON$TRANSACTIONS"}) {
            counts +=
                QStringLiteral("(select count(*) from %1 T join MON$ATTACHMENTS A on A.MON$ATTACHMENT_ID "
                               "= T.MON$ATTACHMENT_ID where A.MON$SYSTEM_FLAG = 0 and "
                               "A.MON$ATTACHMENT_ID <> current_connection)")
                    .arg(table);
        }
        expected << QString::number(window_.module().dataSets().size()) << "1";
    }
    if (CurPeriod.size() <= 6 && data::isSelectionRead(window_.module())) {
        for (const QStringView table : {tables.materials, tables.contents, tables.machines, tables.labour,
                                        QStringView(u"FER20KATALOGPEREVOZKA_TABLE")}) {
            counts += QStringLiteral("(select count(*) from %1 where PER='%2' and REGIONID=%3)")
                          .arg(table, CurPeriod.left(6))
                          .arg(CurRegionId);
        }
        for (const db::DataSet* dataSet : window_.module().selectionDataSets()) {
            expected += QString::number(dataSet->rowCount());
        }
    }
    if (!counts.isEmpty()) {
        EXPECT_EQ(sqlValue(server_.address(), "select " + counts.join("||' '||") + " from RDB$DATABASE"),
                  expected.join(' '));
    }
}

const std::span<const User::Action> User::actions = [] {
    static constexpr auto all = std::to_array<Action>({
        {10, "region", &User::chooseRegion, true, true},
        {6, "period", &User::choosePeriod, true, true},
        {12, "page", &User::turnPage, true, true},
        {25, "key", &User::pressKey},
        {10, "header", &User::clickHeader},
        {6, "columns", &User::arrangeColumns},
        {12, "menu", &User::chooseFromMenu},
        {10, "filter", &User::filter},
        {5, "no filter", &User::clearFilter},
        {8, "find", &User::find},
        {4, "read again", &User::readAgain},
        {3, "edition", &User::chooseEdition, false, true},
        {3, "export", &User::exportTable},
        {3, "resize", &User::resize, false},
        {2, "close", &User::close, false},
        {1, "connect", &User::connect, false},
        {1, "trouble", &User::makeTrouble, false},
    });
    return std::span<const Action>(all);
}();

} // namespace test
