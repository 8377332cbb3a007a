#include "browser/ter_form.h"

#include "base/error.h"
#include "base/heap.h"
#include "base/program_place.h"
#include "browser/banner.h"
#include "browser/grid_export.h"
#include "browser/grid_layout.h"
#include "browser/selector.h"
#include "browser/selector_lists.h"
#include "data/data_modul.h"
#include "data/selection.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"
#include "grid/tree/tree_list.h"
#include "ui/application.h"
#include "ui/fonts.h"
#include "ui/screen_cursor.h"
#include "ui/tight_layout.h"

#include <QDir>
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
#include <iterator>

TTERForm* TERForm = nullptr;

namespace {

constexpr QSize designSize(1212, 644);
constexpr int bannerHeight = 23;
constexpr int selectorBarHeight = 25;
constexpr int selectorGap = 57;
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

/// A selector of the bar at the top.
struct TTERForm::SelectorSpec {
    struct Control {
        browser::Selector* TTERForm::*member;
        const char* name;
        int width;
        void (TTERForm::*handler)();
    };

    Control control;
    QStringView initialText;
    QStringView hint;
};

const TTERForm::SelectorSpec TTERForm::selectors[]{
    {
        .control = {&TTERForm::cxComboBox1, "cxComboBox1", 240, &TTERForm::cxComboBox1PropertiesChange},
        .initialText = u"Регион",
        .hint = u"Выбор текущего региона",
    },
    {
        .control = {&TTERForm::cxComboBox2, "cxComboBox2", 103, &TTERForm::cxComboBox2PropertiesChange},
        .initialText = u"Период",
        .hint = u"Выбор текущего периода",
    },
};

/// A grid of a tab and what it is bound to.
struct TTERForm::GridPlace {
    grid::Grid* TTERForm::*member = nullptr;
    const grid::GridSpec* spec = nullptr;
    db::DataSource TDM::*source = nullptr;
};

/// A tab with a button panel and a grid, which may cover another one.
struct TTERForm::TabSpec {
    struct Sheet {
        QWidget* TTERForm::*member;
        const char* name;
        QStringView caption;
    };

    struct Panel {
        QFrame* TTERForm::*member;
        const char* name;
    };

    struct Button {
        QPushButton* TTERForm::*member;
        const char* name;
        void (TTERForm::*handler)();
    };

    /// How the tab's workbook is called after the banner.
    struct FileName {
        QStringView fixedText;
        bool ofSelection; ///< followed by region and period
    };

    Sheet sheet;
    Panel panel;
    Button button;
    GridPlace shown;
    FileName file;
    GridPlace covered = {};
};

const TTERForm::TabSpec TTERForm::tabs[]{
    {.sheet = {&TTERForm::cxTabSheet1, "cxTabSheet1", u"КТЦ_Материалы"},
     .panel = {&TTERForm::Panel4, "Panel4"},
     .button = {&TTERForm::Button1, "Button1", &TTERForm::Button1Click},
     .shown = {&TTERForm::cxGrid1, &browser::layout::materials, &TDM::DataSource3},
     .file = {.fixedText = u"_КТЦ_Материалы_", .ofSelection = true}},
    {.sheet = {&TTERForm::cxTabSheet2, "cxTabSheet2", u"КТЦ_Материалы_оглавление"},
     .panel = {&TTERForm::Panel5, "Panel5"},
     .button = {&TTERForm::Button2, "Button2", &TTERForm::Button2Click},
     .shown = {&TTERForm::cxGrid3, &browser::layout::contents, &TDM::DataSource4},
     .file = {.fixedText = u"_КТЦ_Материалы_оглавление_", .ofSelection = true},
     .covered = {&TTERForm::cxGrid2, &browser::layout::covered, &TDM::DataSource3}},
    {.sheet = {&TTERForm::cxTabSheet3, "cxTabSheet3", u"КТЦ_Машины"},
     .panel = {&TTERForm::Panel6, "Panel6"},
     .button = {&TTERForm::Button3, "Button3", &TTERForm::Button3Click},
     .shown = {&TTERForm::cxGrid4, &browser::layout::machines, &TDM::DataSource5},
     .file = {.fixedText = u"_КТЦ_Машины_", .ofSelection = true}},
    {.sheet = {&TTERForm::cxTabSheet4, "cxTabSheet4", u"КТЦ_Труд"},
     .panel = {&TTERForm::Panel7, "Panel7"},
     .button = {&TTERForm::Button4, "Button4", &TTERForm::Button4Click},
     .shown = {&TTERForm::cxGrid5, &browser::layout::labour, &TDM::DataSource6},
     .file = {.fixedText = u"_КТЦ_Труд_", .ofSelection = true}},
    {.sheet = {&TTERForm::cxTabSheet9, "cxTabSheet9", u"Каталог перевозка"},
     .panel = {&TTERForm::Panel11, "Panel11"},
     .button = {&TTERForm::Button8, "Button8", &TTERForm::Button8Click},
     .shown = {&TTERForm::cxGrid9, &browser::layout::transport, &TDM::DataSource10},
     .file = {.fixedText = u"_Каталог перевозка_", .ofSelection = true}},
    {.sheet = {&TTERForm::cxTabSheet5, "cxTabSheet5", u"Справочник регионов"},
     .panel = {&TTERForm::Panel8, "Panel8"},
     .button = {&TTERForm::Button5, "Button5", &TTERForm::Button5Click},
     .shown = {&TTERForm::cxGrid6, &browser::layout::regions, &TDM::DataSource1},
     .file = {.fixedText = u"_Регионы", .ofSelection = false}},
    {.sheet = {&TTERForm::cxTabSheet6, "cxTabSheet6", u"Справочник фирм"},
     .panel = {&TTERForm::Panel9, "Panel9"},
     .button = {&TTERForm::Button6, "Button6", &TTERForm::Button6Click},
     .shown = {&TTERForm::cxGrid7, &browser::layout::firms, &TDM::DataSource7},
     .file = {.fixedText = u"_Фирмы", .ofSelection = false}},
    {.sheet = {&TTERForm::cxTabSheet7, "cxTabSheet7", u"Региональные коэффициенты"},
     .panel = {&TTERForm::Panel10, "Panel10"},
     .button = {&TTERForm::Button7, "Button7", &TTERForm::Button7Click},
     .shown = {&TTERForm::cxGrid8, &browser::layout::coefficients, &TDM::DataSource8},
     .file = {.fixedText = u"_Региональные коэффициенты", .ofSelection = false}},
};

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
    for (const SelectorSpec& spec : selectors) {
        auto* const selector = named(new browser::Selector(spec.hint.toString(), Panel2), spec.control.name);
        this->*spec.control.member = selector;
        selector->setFixedWidth(spec.control.width);
        selector->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
        selector->setEditText(spec.initialText.toString());
        bar->addWidget(selector);
        if (spec.control.member == &TTERForm::cxComboBox1) {
            Panel3 = makePanel(Panel2, "Panel3", QFrame::NoFrame);
            Panel3->setFixedWidth(selectorGap);
            bar->addWidget(Panel3);
        }
    }
    bar->addStretch(1);
    layout.addWidget(Panel2);
}

void TTERForm::createBody(QVBoxLayout& layout) {
    Panel1 = makePanel(this, "Panel1", QFrame::Panel);
    cxPageControl1 = named(new QTabWidget(Panel1), "cxPageControl1");
    ui::makeTightLayout<QVBoxLayout>(Panel1)->addWidget(cxPageControl1);
    for (const TabSpec& tab : tabs) {
        createTab(tab);
    }
    createTreeTab();
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
    // Created in the order of the keyboard: the grids, then the button above them.
    auto* const grids = new QStackedLayout;
    grids->setStackingMode(QStackedLayout::StackAll);
    if (tab.covered.member != nullptr) {
        grid::Grid* const covered = createGrid(tab.covered, *sheet, *grids);
        // A focus that nobody sees would be lost.
        covered->view().setFocusPolicy(Qt::NoFocus);
        covered->setFocusPolicy(Qt::NoFocus);
    }
    createGrid(tab.shown, *sheet, *grids);
    auto* const layout = ui::makeTightLayout<QVBoxLayout>(sheet);
    layout->addWidget(createButtonPanel(tab, *sheet));
    layout->addLayout(grids, 1);
}

grid::Grid* TTERForm::createGrid(const GridPlace& place, QWidget& sheet, QStackedLayout& stack) {
    auto* const control = new grid::Grid(*place.spec, DM->*place.source, &sheet);
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

void TTERForm::createTreeTab() {
    cxTabSheet8 = named(new QWidget, "cxTabSheet8");
    cxPageControl1->addTab(cxTabSheet8, QStringLiteral("Каталог"));
    auto* const layout = new QVBoxLayout(cxTabSheet8);
    layout->setContentsMargins(treeMargin, treeMargin, treeMargin, treeMargin);
    cxDBTreeList1 = new grid::TreeList(browser::layout::catalogTree, DM->DataSource9, cxTabSheet8);
    layout->addWidget(cxDBTreeList1);
}

void TTERForm::leaveSelectors(int page) {
    // Whoever turns to a page wants to walk through its rows, not through the regions.
    if (cxComboBox1->hasFocus() || cxComboBox2->hasFocus()) {
        const bool isTree = page == static_cast<int>(std::size(tabs));
        (isTree ? static_cast<QWidget*>(cxDBTreeList1) : this->*tabs[page].shown.member)->setFocus();
    }
}

void TTERForm::FormCreate() {
    host_.clientPanel().layout()->addWidget(this);
    browser::fillRegionSelector(*DM, *cxComboBox1);
    browser::fillPeriodSelector(*DM, *cxComboBox2);
    data::openCatalogs(*DM);
    // Connected only now: filling the selectors is no choice of the user's.
    for (const SelectorSpec& spec : selectors) {
        browser::Selector* const selector = this->*spec.control.member;
        connect(selector, &QComboBox::editTextChanged, this,
                [this, selector, handler = spec.control.handler] {
                    ui::guarded(*selector, [&] { (this->*handler)(); });
                    markSelectors();
                });
    }
    markSelectors();
}

void TTERForm::markSelectors() {
    cxComboBox1->setWarning(regionWarning());
    const auto dataSets = DM->selectionDataSets();
    const bool isEmpty = std::all_of(dataSets.begin(), dataSets.end(),
                                     [](const db::DataSet* dataSet) { return dataSet->rowCount() == 0; });
    cxComboBox2->setWarning(isEmpty ? QStringLiteral("За этот период строк нет") : QString());
}

QString TTERForm::regionWarning() {
    if (!data::isSelectionRead(*DM)) {
        return QStringLiteral(
            "Прочитаны не все таблицы: на страницах могут быть строки другого региона или периода");
    }
    const QString region = cxComboBox1->currentText();
    if (data::isRegion(*DM, region)) {
        shownRegion_ = region;
        return {};
    }
    const QString shown = shownRegion_.isEmpty() ? QStringLiteral("с кодом %1").arg(CurRegionId)
                                                 : QStringLiteral("«%1»").arg(shownRegion_);
    return QStringLiteral("Такого региона нет. Показан регион %1").arg(shown);
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

void TTERForm::FormClose() {
    // Whatever fails on the way, no browser is open afterwards.
    const auto release = qScopeGuard([this] {
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

/// What stands above the printed pages of an export: the edition, the tab, and what was chosen.
QString TTERForm::printedHeader(const TabSpec& tab) const {
    QStringList parts{cxLabel1->text().trimmed(), tab.sheet.caption.toString()};
    if (tab.file.ofSelection) {
        parts += {cxComboBox1->currentText(), cxComboBox2->currentText()};
    }
    return parts.join(QStringLiteral(", "));
}

void TTERForm::exportTab(QPushButton* TTERForm::*button) {
    const TabSpec& tab = *std::find_if(std::begin(tabs), std::end(tabs), [&](const TabSpec& candidate) {
        return candidate.button.member == button;
    });
    const QString selection =
        tab.file.ofSelection ? cxComboBox1->currentText() + cxComboBox2->currentText() : QString();
    browser::exportGrid(this->*tab.shown.member, base::programFolder(),
                        cxLabel1->text() + tab.file.fixedText.toString() + selection, printedHeader(tab));
    ui::showMessage(QStringLiteral("Выгрузка завершена"));
}
