// SPDX-License-Identifier: MIT

#include "app/action_manager.h"
#include "app/status_bar.h"
#include "app/style.h"
#include "browser/selector.h"
#include "browser/ter_form.h"
#include "grid/header/fitted_header.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"
#include "support/catalog_window.h"
#include "support/firebird_server.h"
#include "support/picture.h"
#include "support/printing.h"
#include "support/waiting.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using test::Picture;

/// Red, green and blue in proportion to the light, 1 at most.
using Light = std::array<double, 3>;

Light lightOf(const QColor& color) {
    const auto linear = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return {linear(color.redF()), linear(color.greenF()), linear(color.blueF())};
}

/// The contrast of a text, from 1 to 21, as the WCAG define it.
double contrast(const QColor& text, const QColor& background) {
    const auto luminance = [](const QColor& color) {
        const Light light = lightOf(color);
        return 0.2126 * light[0] + 0.7152 * light[1] + 0.0722 * light[2];
    };
    const auto [darker, lighter] = std::minmax({luminance(text), luminance(background)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// How somebody sees: the light that comes to the same for an eye with all three receptors.
struct Vision {
    const char* name;
    std::array<Light, 3> matrix;
};

/// Lacking the receptors for long, middle and short waves, as Machado, Oliveira and Fernandes reckon (2009).
constexpr std::array<Vision, 4> visions{{
    {"all colours", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
    {"protanopia",
     {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}}},
    {"deuteranopia",
     {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}}},
    {"tritanopia",
     {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}},
}};

/// CIE L*a*b* of a colour as it is seen, in which equal distances look about equally different.
std::array<double, 3> labOf(const QColor& color, const Vision& vision) {
    const Light light = lightOf(color);
    Light seen{};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const Light& row = vision.matrix[channel];
        seen[channel] = std::clamp(row[0] * light[0] + row[1] * light[1] + row[2] * light[2], 0.0, 1.0);
    }
    const auto root = [](double value) {
        return value > 0.008856 ? std::cbrt(value) : 7.787 * value + 16.0 / 116;
    };
    const double x = root((0.4124 * seen[0] + 0.3576 * seen[1] + 0.1805 * seen[2]) / 0.95047);
    const double y = root(0.2126 * seen[0] + 0.7152 * seen[1] + 0.0722 * seen[2]);
    const double z = root((0.0193 * seen[0] + 0.1192 * seen[1] + 0.9505 * seen[2]) / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

double distance(const QColor& one, const QColor& other, const Vision& vision) {
    const auto a = labOf(one, vision);
    const auto b = labOf(other, vision);
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

/// The window at work, looked at part by part.
class ContrastTest : public testing::Test {
protected:
    static constexpr double leastContrast = 4.5;
    static constexpr double leastDistance = 10; // four times what can just be told apart side by side

    static void SetUpTestSuite() { ASSERT_TRUE(app::trySetStyle("SLATECLASSICO")); }

    ContrastTest() {
        window_.form().showNormal();
        window_.form().resize(1200, 800);
        window_.choose("Action1");
        QApplication::processEvents();
    }

    QWidget& panel(const char* name) { return *window_.form().dxStatusBar1->findChild<QWidget*>(name); }
    grid::TableView& table() {
        return TERForm->cxPageControl1->currentWidget()->findChild<grid::Grid*>()->view();
    }

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

    QRect row(int number) { return table().rowRect(number).adjusted(2, 2, -2, -4); }

    test::CatalogWindow window_{test::sampleServer};
};

TEST_F(ContrastTest, EveryTextStandsOutFromItsBackground) {
    TMainForm& form = window_.form();
    form.dxStatusBar1->setText(0, "База FB подключена");
    form.dxStatusBar1->setText(1, "Подсказка");
    for (const char* name : {"ConnectionPanel", "HintPanel", "dxStatusBar1CapsLock", "dxStatusBar1NumLock",
                             "dxStatusBar1Insert"}) {
        EXPECT_GE(shown(panel(name)), leastContrast) << name;
    }
    QTest::keyClick(form.windowHandle(), Qt::Key_Insert);
    EXPECT_GE(shown(panel("dxStatusBar1Insert")), leastContrast) << "a lit key";
    EXPECT_GE(shown(*form.MainMenu1), leastContrast);
    for (QToolButton* const button : form.ActionToolBar1->findChildren<QToolButton*>()) {
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
        form.setFocus();
        EXPECT_GE(shown(field), leastContrast) << "the prompt of an empty field";
    }
    EXPECT_EQ(table().tableModel().rowCount(), 0);
    EXPECT_GE(shown(*table().viewport()), leastContrast) << "that there are no rows";
}

TEST_F(ContrastTest, EveryRowStandsOutInEveryState) {
    table().setFocus();
    QWidget& rows = *table().viewport();
    EXPECT_GE(shown(rows, row(0)), leastContrast) << "selected";
    EXPECT_GE(shown(rows, row(1)), leastContrast) << "plain";
    table().clearFocus();
    EXPECT_GE(shown(rows, row(0)), leastContrast) << "selected without focus";
    EXPECT_GE(shown(table().header()), leastContrast);
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

TEST_F(ContrastTest, StatesDifferForEveryEye) {
    QWidget& connection = panel("ConnectionPanel");
    QWidget& key = panel("dxStatusBar1Insert");
    QLineEdit& field = *TERForm->cxComboBox1->lineEdit();
    const QString connected = connection.palette().color(QPalette::WindowText).name();
    const QString off = key.palette().color(QPalette::WindowText).name();
    const QString plain = background(field);
    table().setFocus();
    const QString selected = Picture(*table().viewport()).background(row(0));
    const QString unselected = Picture(*table().viewport()).background(row(1));
    table().clearFocus();
    const QString inactive = Picture(*table().viewport()).background(row(0));

    QTest::keyClick(window_.form().windowHandle(), Qt::Key_Insert);
    const QString on = key.palette().color(QPalette::WindowText).name();
    test::type(*TERForm->cxComboBox1, "нет такого");
    const QString warning = background(field);
    {
        const test::NextDialog server([](QDialog& dialog) {
            dialog.findChild<QLineEdit*>()->setText("127.0.0.99");
            dialog.accept();
        });
        window_.form().N1->trigger();
    }
    const QString refused = connection.palette().color(QPalette::WindowText).name();
    for (const Vision& vision : visions) {
        const auto differ = [&](const char* what, const QString& one, const QString& other) {
            EXPECT_GE(distance(QColor(one), QColor(other), vision), leastDistance)
                << what << ", " << vision.name << ": " << one.toStdString() << ", " << other.toStdString();
        };
        differ("connected and not", connected, refused);
        differ("a key that is off and on", off, on);
        differ("a selector and its warning", plain, warning);
        differ("selected rows and others", selected, unselected);
        differ("selected rows without focus and others", inactive, unselected);
    }
    // Beneath what other texts have, as its colour is fixed: bold, and its words say the same.
    EXPECT_GE(contrast(QColor(refused), QColor(background(connection))), 3.9);
}

} // namespace
