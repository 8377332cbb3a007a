// SPDX-License-Identifier: MIT

#pragma once

#include "app/status_bar.h"
#include "app/style.h"
#include "browser/ter_form.h"
#include "support/catalog_window.h"
#include "support/firebird_server.h"
#include "support/picture.h"
#include "support/printing.h"

#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

/// The main window with a browser, in the program's own colours.
class WindowTest : public testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(app::trySetStyle("SLATECLASSICO")); }

    WindowTest() {
        form_.showNormal();
        form_.resize(1200, 800);
        QApplication::processEvents();
        form_.dxStatusBar1->setText(0, "База FB");
        form_.dxStatusBar1->setText(1, "Подсказка");
    }

    QWidget& panel(const char* name) { return *form_.dxStatusBar1->findChild<QWidget*>(name); }
    void pressInsert() { QTest::keyClick(form_.windowHandle(), Qt::Key_Insert); }

    test::CatalogWindow window_{test::sampleServer, "Action1"};
    TMainForm& form_ = window_.form();
};
