// SPDX-License-Identifier: MIT

#include "app/error_log.h"
#include "base/program_place.h"
#include "browser/ter_form.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"
#include "support/catalog_window.h"
#include "support/firebird_server.h"
#include "support/printing.h"
#include "support/waiting.h"
#include "ui/screen_cursor.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace {

using test::CatalogWindow;
using test::type;

/// Clicks an export button; returns the message that follows and, behind a bar, the workbooks that are
/// new.
QString exportBy(const QString& button) {
    const QDir folder(base::programFolder());
    const QStringList before = folder.entryList(QDir::Files | QDir::Hidden);
    const test::NextMessage shown;
    auto* const clicked = TERForm->findChild<QPushButton*>(button);
    TERForm->cxPageControl1->setCurrentWidget(clicked->parentWidget()->parentWidget());
    QTest::mouseClick(clicked, Qt::LeftButton);
    QStringList added = folder.entryList(QDir::Files | QDir::Hidden);
    added.removeIf([&](const QString& name) { return before.contains(name) || name.endsWith(".log"); });
    for (const QString& name : added) {
        QFile::remove(folder.filePath(name));
    }
    return shown.text() + '|' + added.join('|');
}

/// Notes, when a grid is disabled and enabled, how things stand.
class SuspensionWatch final : public QObject {
public:
    explicit SuspensionWatch(grid::Grid& grid) { grid.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::EnabledChange) {
            const auto& control = static_cast<const grid::Grid&>(*watched);
            const QDir folder(base::programFolder());
            seen +=
                QStringLiteral("%1%2%3%4%5|")
                    .arg(control.isEnabled() ? "enabled" : "disabled",
                         ui::screenCursor() == ui::ScreenCursor::Hourglass ? " hourglass" : "",
                         control.updatesEnabled() ? "" : " frozen", control.isExporting() ? " exporting" : "",
                         folder.entryList({"*.xlsx"}).isEmpty() ? "" : " written");
        }
        return QObject::eventFilter(watched, event);
    }

    QString seen;
};

TEST(ExportButtons, SuspendTheirGridUnderAnHourglass) {
    CatalogWindow window(test::limitsServer, "Action8");
    grid::Grid& control = *TERForm->cxGrid4;
    const QDir folder(base::programFolder());
    for (const QString& earlier : folder.entryList({"*.xlsx"})) {
        QFile::remove(folder.filePath(earlier));
    }
    const SuspensionWatch watch(control);
    exportBy("Button3");
    EXPECT_EQ(watch.seen, "disabled hourglass frozen exporting|enabled hourglass frozen exporting written|");
    EXPECT_TRUE(control.updatesEnabled());
    EXPECT_FALSE(control.isExporting());
}

TEST(ExportButtons, NameTheFileAfterEditionTabRegionAndPeriod) {
    CatalogWindow window(test::limitsServer, "Action8");
    const std::map<QString, QString> expected{
        {"Button1", "_КТЦ_Материалы_В пределах202403"},
        {"Button2", "_КТЦ_Материалы_оглавление_В пределах202403"},
        {"Button3", "_КТЦ_Машины_В пределах202403"},
        {"Button4", "_КТЦ_Труд_В пределах202403"},
        {"Button5", "_Регионы"},
        {"Button6", "_Фирмы"},
        {"Button7", "_Региональные коэффициенты"},
        {"Button8", "_Каталог перевозка_В пределах202403"},
    };
    TERForm->cxGrid1->setFocus();
    EXPECT_EQ(exportBy("Button1"), "Выгрузка завершена|   ФЕР2020_КТЦ_Материалы_В пределах202403.xlsx");
    EXPECT_EQ(window.form().focusWidget(), &TERForm->cxGrid1->view())
        << "a click on the button leaves the focus in the table";
    for (const auto& [button, text] : expected) {
        EXPECT_EQ(exportBy(button), "Выгрузка завершена|   ФЕР2020" + text + ".xlsx");
    }

    struct Case {
        QString region, period, fileEnd; // an empty end: no file can have that name
    };
    const std::vector<Case> cases{
        {"Респ. Коми", "202403", "Респ"},   {" ", "ж:\"中", " ж:\"中"},
        {"В пределах", " ", "В пределах "}, {"Москва", "20.24", "Москва20"},
        {"а\\б", "202403", "а\\б202403"},   {"а/б", "202403", ""},
        {QString(255, u'ы'), "202403", ""},
    };
    for (const Case& texts : cases) {
        type(*TERForm->cxComboBox1, texts.region);
        type(*TERForm->cxComboBox2, texts.period);
        for (const auto& [button, text] : expected) {
            if (!text.endsWith("202403")) {
                continue;
            }
            const QString outcome = exportBy(button);
            if (!texts.fileEnd.isEmpty()) {
                const QString fixedText = text.left(text.lastIndexOf('_') + 1);
                EXPECT_EQ(outcome, "Выгрузка завершена|   ФЕР2020" + fixedText + texts.fileEnd + ".xlsx");
            } else {
                EXPECT_TRUE(outcome.contains(texts.region) && !outcome.contains("завершена") &&
                            outcome.endsWith('|'))
                    << outcome.toStdString();
                EXPECT_EQ(outcome.contains("не может быть знака «/»"), texts.region.contains('/'));
            }
        }
    }
    for (const grid::Grid* control : TERForm->findChildren<grid::Grid*>()) {
        EXPECT_TRUE(control->isEnabled()) << control->objectName().toStdString();
    }
    QFile log(app::ErrorLog::path());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_EQ(log.readAll().count(" Компонент Button3\r\n"), 2);
}

} // namespace
