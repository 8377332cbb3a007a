// SPDX-License-Identifier: MIT

#include "app/main_form.h"
#include "browser/banner.h"
#include "browser/ter_form.h"
#include "data/data_modul.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"
#include "grid/rows/tree_model.h"
#include "grid/table/grid.h"
#include "grid/table/table_header.h"
#include "grid/table/table_view.h"
#include "grid/tree/tree_list.h"
#include "grid/tree/tree_view.h"
#include "support/catalog_window.h"
#include "support/firebird_server.h"
#include "support/printing.h"

#include <QAccessible>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

#include <gtest/gtest.h>

namespace {

QString colorOf(const QWidget& widget, QPalette::ColorRole role) {
    return widget.palette().color(role).name();
}

QString fontOf(const QWidget& widget) {
    return QStringLiteral("%1 %2%3")
        .arg(widget.font().family())
        .arg(widget.font().pixelSize())
        .arg(widget.font().bold() ? " bold" : "");
}

QString describeSelector(const QComboBox& selector) {
    return QStringLiteral("  %1 %2 wide, %3, background %4, hint \"%5\", prompt \"%6\"\n")
        .arg(selector.objectName())
        .arg(selector.width())
        .arg(fontOf(selector), colorOf(selector, QPalette::Base), selector.statusTip(),
             selector.lineEdit()->placeholderText());
}

/// A column without a field is headed by the name that it looks for.
QString fieldNameOf(const grid::Column& column) {
    return column.field() ? column.field()->column() : column.headerText();
}

QString describeColumns(const std::vector<grid::Column*>& columns) {
    QString text;
    for (const grid::Column* column : columns) {
        text += "      " + column->objectName() + ' ' + fieldNameOf(*column);
        if (column->isVisible()) {
            text += QStringLiteral(" %1 \"%2\"").arg(column->designWidth()).arg(column->headerText());
            text += column->headerAlignment().testFlag(Qt::AlignRight) ? " right" : "";
            text += !column->field()                               ? " no field"
                    : column->alignment().testFlag(Qt::AlignRight) ? ", values right"
                                                                   : "";
            text += column->field() && column->field()->isAmount() ? ", summed" : "";
        } else {
            text += " hidden";
        }
        text += '\n';
    }
    return text;
}

QString describeGrid(const grid::Grid& control) {
    const grid::TableView& view = control.view();
    QString text = "    " + control.objectName() + " > " + view.parentWidget()->objectName() + " > " +
                   view.objectName() + ": " + view.tableModel().dataSet().objectName() + ", count under " +
                   (view.footerColumn() ? fieldNameOf(*view.footerColumn()) : "nothing") + '\n';
    return text + describeColumns(view.tableModel().columns());
}

/// The grids of a sheet, the undermost first.
QString describeSheet(const QTabWidget& pages, int index) {
    const QWidget& sheet = *pages.widget(index);
    QString text = QStringLiteral("  %1 \"%2\"\n").arg(sheet.objectName(), pages.tabText(index));
    for (const QPushButton* button : sheet.findChildren<QPushButton*>()) {
        if (!button->objectName().startsWith("Button")) {
            continue;
        }
        const QRect place = button->geometry();
        text += QStringLiteral("    %1 %2 high, %3 \"%4\" at %5,%6 %7x%8\n")
                    .arg(button->parentWidget()->objectName())
                    .arg(button->parentWidget()->height())
                    .arg(button->objectName(), button->text())
                    .arg(place.x())
                    .arg(place.y())
                    .arg(place.width())
                    .arg(place.height());
    }
    for (const grid::Grid* control : sheet.findChildren<grid::Grid*>(Qt::FindDirectChildrenOnly)) {
        text += describeGrid(*control);
    }
    if (const auto* const tree = sheet.findChild<grid::TreeList*>()) {
        text += "    " + tree->objectName() + ": " + tree->view().treeModel().dataSet().objectName() +
                ", prompt \"" + tree->findChild<QLineEdit*>()->placeholderText() + "\"\n" +
                describeColumns(tree->view().treeModel().columns());
    }
    return text;
}

QString describe(const TTERForm& form) {
    const QPoint margin = form.mapTo(form.parentWidget(), QPoint());
    QString text = QStringLiteral("%1, %2, background %3, margin %4\n")
                       .arg(form.objectName(), fontOf(form), colorOf(form, QPalette::Window))
                       .arg(margin.x());
    text += QStringLiteral("  cxLabel1 \"%1\" %2 high, %3, %4 on tooltip colour %5\n")
                .arg(form.cxLabel1->text())
                .arg(form.cxLabel1->height())
                .arg(fontOf(*form.cxLabel1), colorOf(*form.cxLabel1, QPalette::WindowText))
                .arg(colorOf(*form.cxLabel1, QPalette::Window) == colorOf(form, QPalette::ToolTipBase));
    text += QStringLiteral("  Panel2 %1 high, Panel3 %2 wide\n")
                .arg(form.Panel2->height())
                .arg(form.Panel3->width());
    text += describeSelector(*form.cxComboBox1) + describeSelector(*form.cxComboBox2);
    for (int index = 0; index < form.cxPageControl1->count(); ++index) {
        text += describeSheet(*form.cxPageControl1, index);
    }
    return text;
}

/// The layout as it was designed. Where the environment holds TARVELO_RENEW, `actual` becomes that first.
QString designedLayout(const QString& actual) {
    QFile file(QStringLiteral(TARVELO_SOURCE_DIR "/tests/browser/layout.txt"));
    if (qEnvironmentVariableIsSet("TARVELO_RENEW")) {
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(actual.toUtf8()) > 0);
        file.close();
    }
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

/// The names of the controls in the order of the keyboard, from `first` on.
QStringList keyboardOrder(const QWidget& first, int count) {
    QStringList names;
    for (const QWidget* widget = &first; names.size() < count; widget = widget->nextInFocusChain()) {
        const QString& name = widget->objectName();
        if (qobject_cast<const grid::Grid*>(widget) || name.startsWith("Button")) {
            names += name;
        }
    }
    return names;
}

TEST(BrowserLayout, IsWhatTheWindowWasDesignedToBe) {
    test::CatalogWindow window(test::sampleServer, "Action1");
    // Every tab is shown once, so that its layout is in force.
    for (int index = TERForm->cxPageControl1->count() - 1; index >= 0; --index) {
        TERForm->cxPageControl1->setCurrentIndex(index);
    }
    const QString layout = describe(*TERForm);
    EXPECT_EQ(layout, designedLayout(layout)) << "TARVELO_RENEW=1 rewrites tests/browser/layout.txt";
    EXPECT_EQ(keyboardOrder(*TERForm->cxGrid2, 3), QStringList({"cxGrid2", "cxGrid3", "Button2"}));
    TERForm->cxPageControl1->setCurrentWidget(TERForm->cxTabSheet2);
    TERForm->cxGrid2->setFocus();
    EXPECT_TRUE(TERForm->cxGrid3->view().hasFocus());
    EXPECT_EQ(TERForm->width(), window.form().Panel1->width() - 6);
    EXPECT_EQ(TERForm->cxGrid2->geometry(), TERForm->cxGrid3->geometry());
}

/// The names of the tables and trees that a screen reader comes upon beneath `parent`.
QStringList accessibleTables(QAccessibleInterface& parent) {
    QStringList names;
    for (int index = 0; index < parent.childCount(); ++index) {
        QAccessibleInterface& child = *parent.child(index);
        if (child.role() == QAccessible::Table || child.role() == QAccessible::Tree) {
            names += child.text(QAccessible::Name);
        } else if (!child.state().invisible) {
            names += accessibleTables(child);
        }
    }
    return names;
}

TEST(BrowserLayout, TellsScreenReadersOfOneTableOnEachPageByThePagesCaption) {
    test::CatalogWindow window(test::sampleServer, "Action1");
    QTabWidget& pages = *TERForm->cxPageControl1;
    for (int index = 0; index < pages.count(); ++index) {
        pages.setCurrentIndex(index);
        EXPECT_EQ(accessibleTables(*QAccessible::queryAccessibleInterface(pages.widget(index))),
                  QStringList(pages.tabText(index)));
    }
}

} // namespace
