// SPDX-License-Identifier: MIT

#include "browser/ter_form.h"

#include "base/error.h"
#include "base/heap.h"
#include "base/program_place.h"
#include "browser/banner.h"
#include "browser/grid_export.h"
#include "browser/selector.h"
#include "browser/selector_lists.h"
#include "browser/ter_form_tables.h"
#include "data/data_modul.h"
#include "data/selection.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"
#include "grid/tree/tree_list.h"
#include "grid/tree/tree_view.h"
#include "ui/application.h"
#include "ui/fonts.h"
#include "ui/screen_cursor.h"
#include "ui/tight_layout.h"

#include <QAction>
#include <QDir>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QShowEvent>
#include <QStackedLayout>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

TTERForm* TERForm = nullptr;

namespace {

constexpr QSize designSize(1212, 644);
constexpr int bannerHeight = 23;
constexpr int selectorBarHeight = 25;
constexpr int buttonPanelHeight = 41;
constexpr QRect buttonPlace(0, 10, 121, 25);
constexpr int treeMargin = 3;
const QColor bannerColor(0, 0, 255);

template <typename Widget>
Widget* named(Widget* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QFrame* makePanel(QWidget* parent, const char* name, QFrame::Shape shape) {
    QFrame* const panel = named(new QFrame(parent), name);
    panel->setFrameStyle(static_cast<int>(shape) | static_cast<int>(QFrame::Raised));
    panel->setLineWidth(1);
    return panel;
}

} // namespace

void TTERForm::create(browser::BrowserHost& host) {
    TERForm = new TTERForm(host);
    try {
        TERForm->FormCreate();
    } catch (...) {
        delete TERForm;
        throw;
    }
}

TTERForm::TTERForm(browser::BrowserHost& host) : Form(QStringLiteral("TERForm")), host_(host) {
    setWindowTitle(QStringLiteral("TERForm"));
    setFont(ui::pixelFont(QStringLiteral("Calibri"), 16));
    resize(designSize);
    QPalette white = palette();
    white.setColor(QPalette::Window, Qt::white);
    setPalette(white);
    setAutoFillBackground(true);
    auto* const layout = ui::makeTightLayout<QVBoxLayout>(this);
    createBanner(*layout);
    createSelectors(*layout);
    createBody(*layout);
}

TTERForm::~TTERForm() {
    if (TERForm == this) {
        TERForm = nullptr;
    }
}

void TTERForm::createBanner(QVBoxLayout& layout) {
    cxLabel1 = named(new browser::Banner(QStringLiteral("cxLabel1"), this), "cxLabel1");
    cxLabel1->setFixedHeight(bannerHeight);
    cxLabel1->setAlignment(Qt::AlignCenter);
    cxLabel1->setTextFormat(Qt::PlainText);
    cxLabel1->setFont(ui::pixelFont(QStringLiteral("Calibri"), 15, true));
    QPalette colors = palette();
    colors.setColor(QPalette::Window, palette().color(QPalette::ToolTipBase));
    colors.setColor(QPalette::WindowText, bannerColor);
    cxLabel1->setPalette(colors);
    layout.addWidget(cxLabel1);
}

void TTERForm::createSelectors(QVBoxLayout& layout) {
    Panel2 = makePanel(this, "Panel2", QFrame::Panel);
    Panel2->setFixedHeight(selectorBarHeight);
    auto* const bar = ui::makeTightLayout<QHBoxLayout>(Panel2);
    for (const SelectorSpec& spec : selectors()) {
        auto* const selector = named(new browser::Selector(spec.hint.toString(), Panel2), spec.control.name);
        this->*spec.control.member = selector;
        selector->setFixedWidth(spec.control.width);
        selector->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
        selector->setEditText(spec.initialText.toString());
        bar->addWidget(selector);
        if (spec.gap.member) {
            QFrame* const gap = makePanel(Panel2, spec.gap.name, QFrame::NoFrame);
            this->*spec.gap.member = gap;
            gap->setFixedWidth(spec.gap.width);
            bar->addWidget(gap);
        }
    }
    bar->addStretch(1);
    layout.addWidget(Panel2);
}

void TTERForm::createBody(QVBoxLayout& layout) {
    Panel1 = makePanel(this, "Panel1", QFrame::Panel);
    cxPageControl1 = named(new QTabWidget(Panel1), "cxPageControl1");
    ui::makeTightLayout<QVBoxLayout>(Panel1)->addWidget(cxPageControl1);
    for (const TabSpec& tab : tabs()) {
        createTab(tab);
    }
    for (QToolButton* const arrow : cxPageControl1->tabBar()->findChildren<QToolButton*>()) {
        arrow->setFocusPolicy(Qt::NoFocus);
    }
    connect(cxPageControl1, &QTabWidget::currentChanged, this, &TTERForm::leaveSelectors);
    layout.addWidget(Panel1, 1);
}

void TTERForm::createTab(const TabSpec& tab) {
    QWidget* const sheet = named(new QWidget, tab.sheet.name);
    this->*tab.sheet.member = sheet;
    cxPageControl1->addTab(sheet, tab.sheet.caption.toString());
    tab.tree.member ? createTreePage(tab, *sheet) : createGridPage(tab, *sheet);
}

void TTERForm::createGridPage(const TabSpec& tab, QWidget& sheet) {
    // Created in the order of the keyboard: the grids, then the button above them.
    auto* const grids = new QStackedLayout;
    grids->setStackingMode(QStackedLayout::StackAll);
    grid::Grid* const covered = tab.covered.member ? createGrid(tab.covered, sheet, *grids) : nullptr;
    grid::Grid* const shown = createGrid(tab.shown, sheet, *grids);
    shown->view().setAccessibleName(tab.sheet.caption.toString());
    if (covered) {
        covered->setCoveredBy(*shown);
    }
    auto* const layout = ui::makeTightLayout<QVBoxLayout>(&sheet);
    layout->addWidget(createButtonPanel(tab, sheet));
    layout->addLayout(grids, 1);
}

grid::Grid* TTERForm::createGrid(const GridPlace& place, QWidget& sheet, QStackedLayout& stack) {
    auto* const control = new grid::Grid(place.spec, DM->*place.source, &sheet);
    this->*place.member = control;
    stack.addWidget(control);
    stack.setCurrentWidget(control);
    return control;
}

QFrame* TTERForm::createButtonPanel(const TabSpec& tab, QWidget& sheet) {
    QFrame* const panel = makePanel(&sheet, tab.panel.name, QFrame::NoFrame);
    this->*tab.panel.member = panel;
    panel->setFixedHeight(buttonPanelHeight);
    QPushButton* const button = named(new QPushButton(QStringLiteral("В ексель"), panel), tab.button.name);
    this->*tab.button.member = button;
    button->setGeometry(buttonPlace);
    // A click leaves the focus in the table, where the user goes on.
    button->setFocusPolicy(Qt::TabFocus);
    button->setAutoDefault(true); // Enter presses it
    connect(button, &QPushButton::clicked, this, [this, button, handler = tab.button.handler] {
        ui::guarded(*button, [&] { (this->*handler)(); });
    });
    return panel;
}

void TTERForm::createTreePage(const TabSpec& tab, QWidget& sheet) {
    auto* const layout = new QVBoxLayout(&sheet);
    layout->setContentsMargins(treeMargin, treeMargin, treeMargin, treeMargin);
    auto* const tree = new grid::TreeList(tab.tree.spec, DM->*tab.tree.source, &sheet);
    this->*tab.tree.member = tree;
    tree->view().setAccessibleName(tab.sheet.caption.toString());
    layout->addWidget(tree);
}

void TTERForm::leaveSelectors(int page) {
    // Whoever turns to a page wants to walk through its rows, not through the regions.
    if (cxComboBox1->hasFocus() || cxComboBox2->hasFocus()) {
        const TabSpec& tab = tabs()[static_cast<std::size_t>(page)];
        (tab.tree.member ? static_cast<QWidget*>(this->*tab.tree.member) : this->*tab.shown.member)
            ->setFocus();
    }
}

void TTERForm::FormCreate() {
    host_.clientPanel().layout()->addWidget(this);
    browser::fillRegionSelector(*DM, *cxComboBox1);
    browser::fillPeriodSelector(*DM, *cxComboBox2);
    data::openCatalogs(*DM);
    // Connected only now: filling the selectors is no choice of the user's.
    for (const SelectorSpec& spec : selectors()) {
        browser::Selector* const selector = this->*spec.control.member;
        connect(selector, &QComboBox::editTextChanged, this,
                [this, selector, handler = spec.control.handler] {
                    ui::guarded(*selector, [&] { (this->*handler)(); });
                    markSelectors();
                });
    }
    auto* const again = new QAction(QStringLiteral("Прочитать ещё раз"), this);
    again->setShortcut(Qt::Key_F5);
    connect(again, &QAction::triggered, this, [this] {
        ui::guarded(*this, [this] { reread(); });
        markSelectors();
    });
    addAction(again);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    markSelectors();
}

void TTERForm::reread() {
    const ui::Hourglass hourglass(ui::ScreenCursor::Default);
    data::rereadSelection(*DM);
}

void TTERForm::markSelectors() {
    rememberShownRegion();
    cxComboBox1->setWarning(regionWarning());
    const bool isEmpty = data::isSelectionRead(*DM) &&
                         std::ranges::all_of(DM->selectionDataSets(), [](const db::DataSet* dataSet) {
                             return dataSet->rowCount() == 0;
                         });
    cxComboBox2->setWarning(isEmpty ? QStringLiteral("Для этого региона и периода строк нет") : QString());
}

void TTERForm::rememberShownRegion() {
    const QString region = cxComboBox1->currentText();
    if (data::isSelectionRead(*DM) && data::isChosenRegion(*DM, region)) {
        shownRegion_ = region;
    }
}

QString TTERForm::regionWarning() const {
    if (!data::isSelectionRead(*DM)) {
        return QStringLiteral(
            "Прочитаны не все таблицы: на страницах могут быть строки другого региона или периода");
    }
    if (data::isChosenRegion(*DM, cxComboBox1->currentText())) {
        return {};
    }
    return QStringLiteral("По этому тексту регион не выбран. Показан «%1»").arg(shownRegion());
}

QString TTERForm::shownRegion() const {
    return shownRegion_.isEmpty() ? QStringLiteral("регион с кодом %1").arg(CurRegionId) : shownRegion_;
}

void TTERForm::FormShow() {
    ui::setScreenCursor(ui::ScreenCursor::Default);
    cxGrid1->setFocus();
    cxGrid1->view().goToFirstRow();
}

void TTERForm::cxComboBox1PropertiesChange() {
    if (!data::locateRegion(*DM, cxComboBox1->currentText())) {
        return;
    }
    const ui::Hourglass hourglass(ui::ScreenCursor::Default);
    CurRegionId = data::currentRegionId(*DM);
    data::ReopenSelectionDatasets(*DM);
}

void TTERForm::cxComboBox2PropertiesChange() {
    const ui::Hourglass hourglass(ui::ScreenCursor::Default);
    CurPeriod = cxComboBox2->currentText();
    data::ReopenSelectionDatasets(*DM);
}

void TTERForm::FormCloseQuery(bool& canClose) {
    const QString folder = base::programFolder();
    if (!QDir::setCurrent(folder)) {
        throw base::FileError(QStringLiteral("Нельзя сделать текущей папку"), folder, qt_error_string());
    }
    canClose = true;
}

void TTERForm::FormClose(ui::CloseAction& action) {
    // Whatever fails on the way, no browser is open afterwards.
    const auto release = qScopeGuard([this, &action] {
        action = ui::CloseAction::Free;
        TERForm = nullptr;
        host_.clearOpenBrowserMarker();
    });
    hide();
    ui::setScreenCursor(ui::ScreenCursor::Default);
    for (db::DataSet* dataSet : DM->dataSets()) {
        dataSet->close();
    }
    base::trimHeap();
    DM->releaseQueries();
}

void TTERForm::showEvent(QShowEvent* event) {
    Form::showEvent(event);
    if (!event->spontaneous()) {
        ui::guarded(*this, [this] { FormShow(); });
    }
}

void TTERForm::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Find)) {
        openFind();
    } else if (event->matches(QKeySequence::NextChild)) {
        turnPage(1);
    } else if (event->matches(QKeySequence::PreviousChild)) {
        turnPage(-1);
    } else {
        Form::keyPressEvent(event);
    }
}

void TTERForm::turnPage(int step) {
    const int count = cxPageControl1->count();
    cxPageControl1->setCurrentIndex((cxPageControl1->currentIndex() + step + count) % count);
}

void TTERForm::openFind() {
    const TabSpec& tab = tabs()[static_cast<std::size_t>(cxPageControl1->currentIndex())];
    if (tab.tree.member) {
        (this->*tab.tree.member)->openFind();
    } else {
        (this->*tab.shown.member)->openFind();
    }
}

/// What stands above the printed pages of an export: the edition, the tab, and what was chosen.
QString TTERForm::printedHeader(const TabSpec& tab) const {
    QStringList parts{cxLabel1->text().trimmed(), tab.sheet.caption.toString()};
    // The rows' own region and period, whatever the selectors say.
    if (tab.file.ofSelection && data::isSelectionRead(*DM)) {
        parts += {shownRegion(), CurPeriod};
    }
    return parts.join(QStringLiteral(", "));
}

void TTERForm::exportTab(QPushButton* TTERForm::*button) {
    const TabSpec& tab =
        *std::ranges::find(tabs(), button, [](const TabSpec& candidate) { return candidate.button.member; });
    const QString selection =
        tab.file.ofSelection ? cxComboBox1->currentText() + cxComboBox2->currentText() : QString();
    browser::exportGrid(this->*tab.shown.member, base::programFolder(),
                        cxLabel1->text() + tab.file.fixedText.toString() + selection, printedHeader(tab));
    ui::showMessage(QStringLiteral("Выгрузка завершена"));
}
