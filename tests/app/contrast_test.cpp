// SPDX-License-Identifier: MIT

#include "app/action_manager.h"
#include "app/window_fixture.h"
#include "browser/selector.h"
#include "grid/header/fitted_header.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace {

using test::Picture;

/// The contrast of a text, from 1 to 21, as the WCAG define it.
double contrast(const QColor& text, const QColor& background) {
    const auto linear = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [&](const QColor& color) {
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(text), luminance(background)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// The window at work, looked at part by part.
class ContrastTest : public WindowTest {
protected:
    static constexpr double leastContrast = 4.5;

    /// The contrast of what a part shows. Strokes thinner than a pixel are paler than their colour, and are
    /// read so.
    double shown(QWidget& part, QRect area = {}) {
        QApplication::processEvents();
        area = area.isNull() ? part.rect().adjusted(2, 2, -2, -2) : area;
        const Picture picture(part);
        return contrast(QColor(picture.foreground(area)), QColor(picture.background(area)));
    }
    QString background(QWidget& part) {
        QApplication::processEvents();
        return Picture(part).background(part.rect().adjusted(2, 2, -2, -2));
    }
};

TEST_F(ContrastTest, EveryTextStandsOutFromItsBackground) {
    for (const char* name : {"ConnectionPanel", "HintPanel", "dxStatusBar1CapsLock", "dxStatusBar1NumLock",
                             "dxStatusBar1Insert"}) {
        EXPECT_GE(shown(panel(name)), leastContrast) << name;
    }
    pressInsert();
    EXPECT_GE(shown(panel("dxStatusBar1Insert")), leastContrast) << "a lit key";
    EXPECT_GE(shown(*form_.MainMenu1), leastContrast);
    for (QToolButton* const button : form_.ActionToolBar1->findChildren<QToolButton*>()) {
        if (!button->text().isEmpty()) {
            EXPECT_GE(shown(*button), leastContrast) << button->text().toStdString();
        }
    }
    EXPECT_GE(shown(*TERForm->findChild<QWidget*>("cxLabel1")), leastContrast) << "the banner";
    EXPECT_GE(shown(*TERForm->Button1), leastContrast);
    auto& tabs = *TERForm->cxPageControl1->tabBar();
    for (const int tab : {0, 1}) {
        EXPECT_GE(shown(tabs, tabs.tabRect(tab).adjusted(6, 5, -6, -5)), leastContrast) << "tab " << tab;
    }

    for (browser::Selector* const selector : {TERForm->cxComboBox1, TERForm->cxComboBox2}) {
        QLineEdit& field = *selector->lineEdit();
        EXPECT_GE(shown(field), leastContrast);
        const QString plain = background(field);
        test::type(*selector, "нет такого");
        EXPECT_NE(background(field), plain) << "a warning";
        EXPECT_GE(shown(field), leastContrast) << "beside a warning";
        test::type(*selector, "");
        form_.setFocus();
        EXPECT_GE(shown(field), leastContrast) << "the prompt of an empty field";
    }
    EXPECT_EQ(TERForm->cxGrid1->view().tableModel().rowCount(), 0);
    EXPECT_GE(shown(*TERForm->cxGrid1->view().viewport()), leastContrast) << "that there are no rows";
}

// The colours of the rows themselves are fixed, see grid/table/painting_test.cpp.
TEST_F(ContrastTest, EveryPairOfThePaletteStandsOut) {
    EXPECT_GE(shown(TERForm->cxGrid1->view().header()), leastContrast);
    // Places where no widget can be grabbed: lists, tool tips, what is found, counts in the list of a filter.
    const QPalette colors = QApplication::palette();
    using Pair = std::pair<QPalette::ColorRole, QPalette::ColorRole>;
    for (const auto& [text, background] :
         {Pair(QPalette::WindowText, QPalette::Window), Pair(QPalette::Text, QPalette::Base),
          Pair(QPalette::Text, QPalette::AlternateBase), Pair(QPalette::PlaceholderText, QPalette::Base),
          Pair(QPalette::ToolTipText, QPalette::ToolTipBase), Pair(QPalette::ButtonText, QPalette::Button),
          Pair(QPalette::HighlightedText, QPalette::Highlight)}) {
        EXPECT_GE(contrast(colors.color(text), colors.color(background)), leastContrast)
            << text << " on " << background;
    }
}

} // namespace
