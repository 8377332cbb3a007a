// SPDX-License-Identifier: MIT

#include "app/action_manager.h"
#include "app/window_fixture.h"
#include "browser/selector.h"
#include "grid/header/fitted_header.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"
#include "support/waiting.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

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
class ContrastTest : public WindowTest {
protected:
    static constexpr double leastContrast = 4.5;
    static constexpr double leastDistance = 10; // four times what can just be told apart side by side

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

TEST_F(ContrastTest, StatesDifferForEveryEye) {
    const auto textOf = [&](const char* name) { return panel(name).palette().color(QPalette::WindowText); };
    QLineEdit& field = *TERForm->cxComboBox1->lineEdit();
    const QColor connected = textOf("ConnectionPanel");
    const QColor off = textOf("dxStatusBar1Insert");
    const QColor plain(background(field));

    pressInsert();
    const QColor on = textOf("dxStatusBar1Insert");
    test::type(*TERForm->cxComboBox1, "нет такого");
    const QColor warning(background(field));
    {
        const test::NextDialog server([](QDialog& dialog) {
            dialog.findChild<QLineEdit*>()->setText("127.0.0.99");
            dialog.accept();
        });
        form_.N1->trigger();
    }
    const QColor refused = textOf("ConnectionPanel");
    for (const Vision& vision : visions) {
        EXPECT_GE(distance(connected, refused, vision), leastDistance) << vision.name;
        EXPECT_GE(distance(off, on, vision), leastDistance) << vision.name;
        EXPECT_GE(distance(plain, warning, vision), leastDistance) << vision.name;
    }
    // Beneath what other texts have, as its colour is fixed: bold, and its words say the same.
    EXPECT_GE(contrast(refused, QColor(background(panel("ConnectionPanel")))), 3.9);
}

} // namespace
