// SPDX-License-Identifier: MIT

#include "support/catalog_window.h"

#include "app/action_manager.h"
#include "app/error_log.h"
#include "data/selection.h"
#include "ui/screen_cursor.h"

#include <QAction>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

#include <stdexcept>

namespace test {

CatalogWindow::CatalogWindow(const QString& server, const QString& edition) {
    DM = &module_;
    CurRegionId = 0;
    CurPeriod.clear();
    QFile::remove(app::ErrorLog::path());
    module_.connectTo(server);
    form_.ActionToolBar1->show();
    if (!QTest::qWaitForWindowActive(&form_)) {
        throw std::runtime_error("the main window does not become active");
    }
    if (!edition.isEmpty()) {
        choose(edition);
    }
}

CatalogWindow::~CatalogWindow() {
    EXPECT_EQ(ui::screenCursor(), ui::ScreenCursor::Default);
    QFile::remove(app::ErrorLog::path());
}

void CatalogWindow::choose(const QString& action) {
    form_.findChild<QAction*>(action)->trigger();
    QCoreApplication::processEvents();
}

void type(QComboBox& selector, const QString& text) {
    selector.lineEdit()->setFocus();
    selector.lineEdit()->selectAll();
    if (text.isEmpty()) {
        QTest::keyClick(selector.lineEdit(), Qt::Key_Delete);
    }
    for (const QChar character : text) {
        QTest::sendKeyEvent(QTest::Click, selector.lineEdit(), Qt::Key_unknown, QString(character),
                            Qt::NoModifier);
    }
}

} // namespace test
