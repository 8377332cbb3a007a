// SPDX-License-Identifier: MIT

#include "app/action_manager.h"
#include "app/status_bar.h"
#include "app/style.h"
#include "browser/selector.h"
#include "browser/ter_form.h"
#include "grid/header/fitted_header.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"
#include "grid/tree/tree_list.h"
#include "grid/tree/tree_view.h"
#include "support/catalog_window.h"
#include "support/firebird_server.h"
#include "support/picture.h"
#include "support/printing.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <QWindow>

#include <gtest/gtest.h>

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

/// The main window with a browser, in the program's own colours.
class WindowPaintingTest : public testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(app::trySetStyle("SLATECLASSICO")); }

    WindowPaintingTest() {
        form_.showNormal();
        form_.resize(1200, 800);
        QApplication::processEvents();
        form_.dxStatusBar1->setText(0, "База FB");
        form_.dxStatusBar1->setText(1, "Подсказка");
    }

    QWidget& panel(const char* name) { return *form_.dxStatusBar1->findChild<QWidget*>(name); }
    void pressInsert() { QTest::keyClick(form_.windowHandle(), Qt::Key_Insert); }

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

    /// Whether a part of the main window shows its text in that font and those colours; strokes that are
    /// thinner than a pixel come near theirs.
    void expectLooks(QWidget& part, const QString& font, const QColor& text, const QColor& background) {
        const QFont& own = part.font();
        EXPECT_EQ(
            QStringLiteral("%1 %2%3").arg(own.family()).arg(own.pixelSize()).arg(own.bold() ? " bold" : ""),
            font);
        const Picture picture(form_);
        const QRect area(part.mapTo(&form_, QPoint(2, 2)), part.size() - QSize(4, 4));
        EXPECT_EQ(picture.background(area), background.name()) << part.objectName().toStdString();
        const QColor shown(picture.foreground(area));
        for (const auto channel : {&QColor::red, &QColor::green, &QColor::blue}) {
            EXPECT_NEAR((shown.*channel)(), (text.*channel)(), 24) << part.objectName().toStdString();
        }
    }

    /// The find bar of the materials after a search that is complete.
    static QWidget& searchedBar() {
        grid::TableView& table = TERForm->cxGrid1->view();
        table.setFocus();
        QTest::keyClick(&table, Qt::Key_F, Qt::ControlModifier);
        auto& bar = *TERForm->cxGrid1->findChild<QWidget*>("FindBar");
        bar.findChild<QLineEdit*>("FindBarText")->setText("бетон");
        const auto& outcome = *bar.findChild<QLabel*>("FindBarOutcome");
        EXPECT_TRUE(QTest::qWaitFor([&] { return outcome.text().contains(" из "); }));
        return bar;
    }

    /// Expects so many widgets to stand side by side in a bar, and none over another one.
    static void expectLaidOut(const QWidget& bar, qsizetype count) {
        const QString name = bar.objectName();
        QRegion taken;
        qsizetype standing = 0;
        for (const QWidget* const part : bar.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            if (part->isVisible()) {
                EXPECT_TRUE(bar.rect().contains(part->geometry())) << name.toStdString();
                EXPECT_FALSE(taken.intersects(part->geometry())) << name.toStdString();
                taken += part->geometry();
                ++standing;
            }
        }
        EXPECT_EQ(standing, count) << name.toStdString();
    }

    test::CatalogWindow window_{test::sampleServer, "Action1"};
    TMainForm& form_ = window_.form();
};

TEST_F(WindowPaintingTest, HasTheColoursAndFontsOfItsBars) {
    const QString statusFont = "Tahoma 13 bold";
    const QColor pale("#ffffe1");
    expectLooks(panel("ConnectionPanel"), statusFont, "#008000", pale);
    form_.dxStatusBar1->setFontColor(0, Qt::red);
    expectLooks(panel("ConnectionPanel"), statusFont, "#ff0000", pale);
    expectLooks(panel("HintPanel"), statusFont, "#800000", pale);
    expectLooks(panel("dxStatusBar1Insert"), statusFont, "#707070", pale);
    pressInsert();
    expectLooks(panel("dxStatusBar1Insert"), statusFont, "#800080", pale);
    EXPECT_EQ(panel("ConnectionPanel").width(), 200);
    const Picture bar(*form_.dxStatusBar1);
    const QColor separator("#b4b08c");
    EXPECT_GT(bar.amount({0, 0, 200, 2}, separator), 90);
    EXPECT_GT(bar.amount({198, 2, 3, 18}, separator), 5) << "between the panels";
    EXPECT_EQ(bar.amount({202, 2, 100, 18}, separator), 0);

    for (QToolButton* const button : form_.ActionToolBar1->findChildren<QToolButton*>()) {
        if (button->accessibleName() == "ТЕР") {
            const QColor marked(Picture(*button).background(button->rect()));
            EXPECT_TRUE(marked.saturation() == 0 && marked.lightness() > 220) << marked.name().toStdString();
        } else if (!button->accessibleName().isEmpty()) {
            expectLooks(*button, "Tahoma 11", Qt::black, "#e6e9ed");
        }
    }
    const Picture toolBar(*form_.ActionToolBar1);
    const int used = form_.ActionToolBar1->sizeHint().width();
    EXPECT_EQ(toolBar.background({used + 2, 0, 200, 23}), "#ffffff");
    EXPECT_TRUE(toolBar.ink({used + 2, 0, 200, 23}).isEmpty());

    auto& banner = *TERForm->findChild<QWidget*>("cxLabel1");
    expectLooks(banner, "Calibri 15 bold", "#0000ff", pale);
    const Picture bannerPicture(banner);
    EXPECT_GT(bannerPicture.amount(banner.rect(), Qt::white), 5) << "the light edge of the letters";
    EXPECT_NEAR(bannerPicture.ink(banner.rect()).center().x(), banner.width() / 2.0, 12);
}

TEST_F(WindowPaintingTest, ShowsOneOfTwoGridsThatLieUponEachOther) {
    TERForm->cxPageControl1->setCurrentWidget(TERForm->cxTabSheet2);
    QApplication::processEvents();
    const QPoint center = TERForm->cxGrid3->mapTo(&form_, TERForm->cxGrid3->rect().center());
    EXPECT_TRUE(TERForm->cxGrid3->isAncestorOf(form_.childAt(center)));
    const QRect place(TERForm->cxGrid3->mapTo(TERForm->cxTabSheet2, QPoint()), TERForm->cxGrid3->size());
    EXPECT_EQ(Picture(TERForm->cxTabSheet2->grab(place)).image(), Picture(*TERForm->cxGrid3).image());
}

TEST_F(WindowPaintingTest, ShowsTheTreeWithItsButtonsAndHits) {
    constexpr int nameColumn = 2;
    constexpr int level = 18; // pixels of indentation
    TERForm->cxPageControl1->setCurrentWidget(TERForm->cxTabSheet8);
    grid::TreeView& view = TERForm->cxDBTreeList1->view();
    view.setFocus();
    const auto picture = [&] { return Picture(*view.viewport()); };
    const auto buttonOf = [&](int row) {
        return QRect(view.rows().at(row).depth * level + 2, view.rowRect(row).top() + 2, level - 4, 16);
    };
    const auto textOf = [&](int row) {
        const int left = buttonOf(row).right() + 4;
        return QRect(left, view.rowRect(row).top() + 2, view.header().sectionSize(nameColumn) - left - 3,
                     view.rowRect(row).height() - 5);
    };
    const double plus = picture().darkness(buttonOf(0));
    view.expandBranch(view.rows().at(0).node);
    EXPECT_GT(plus, 1.3 * picture().darkness(buttonOf(0))) << "a minus";
    for (int row = 0; row < 5; ++row) {
        ASSERT_EQ(view.rows().at(row).depth, row);
        EXPECT_EQ(picture().darkness(buttonOf(row)) > 3, row < 4) << "the last one has no children";
        EXPECT_NEAR(picture().ink(textOf(row)).left() - textOf(row).left(), 3, 2);
        EXPECT_EQ(picture().foreground(textOf(row)), "#101820");
        EXPECT_EQ(picture().background(textOf(row)), row == 0 ? "#dce8f8" : "#ffffff");
    }
    view.clearFocus();
    EXPECT_EQ(picture().background(textOf(0)), "#eaecf0");

    auto& edit = *TERForm->cxDBTreeList1->findChild<QLineEdit*>();
    const QColor foundText(255, 224, 102);
    EXPECT_EQ(picture().amount(textOf(0), foundText), 0);
    edit.setText("книга 01");
    EXPECT_GT(picture().amount(textOf(0), foundText), 100);
    edit.setText("нет такого узла");
    EXPECT_EQ(picture().foreground(view.viewport()->rect()), "#6d6d6d") << "that nothing has been found";
    EXPECT_NEAR(picture().ink(view.viewport()->rect()).center().x(), view.viewport()->width() / 2.0, 3);
}

TEST_F(WindowPaintingTest, LaysOutWhatFindsAndFilters) {
    expectLaidOut(searchedBar(), 4);

    TERForm->cxGrid1->view().openFilter(2);
    QWidget* const popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr);
    expectLaidOut(*popup, 6);
    const auto& values = *popup->findChild<QListView*>("FilterValues");
    EXPECT_GT(values.height(), popup->height() / 3);
    popup->close();

    TERForm->cxPageControl1->setCurrentWidget(TERForm->cxTabSheet8);
    auto& words = *TERForm->cxDBTreeList1->findChild<QLineEdit*>();
    words.setText("книга");
    QApplication::processEvents();
    expectLaidOut(*words.parentWidget(), 3);
}

TEST_F(WindowPaintingTest, RestsWhenASearchIsComplete) {
    class Timers final : public QObject {
    public:
        int count = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::Timer ? 1 : 0;
            return false;
        }
    } timers;
    searchedBar().installEventFilter(&timers);
    QTest::qWait(100);
    EXPECT_EQ(timers.count, 0);
}

TEST_F(WindowPaintingTest, EveryTextStandsOutFromItsBackground) {
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
    // The colours of the rows themselves are fixed, see TablePaintingTest.
    EXPECT_GE(shown(TERForm->cxGrid1->view().header()), leastContrast);
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

TEST_F(WindowPaintingTest, EveryPairOfThePaletteStandsOut) {
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
