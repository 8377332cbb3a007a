// SPDX-License-Identifier: MIT

#pragma once

#include "browser/browser_host.h"
#include "browser/selector.h"
#include "ui/form.h"

#include <span>

class QFrame;
class QLabel;
class QPushButton;
class QStackedLayout;
class QTabWidget;
class QVBoxLayout;

namespace grid {
class Grid;
class TreeList;
} // namespace grid

/// The catalog browser window: banner, region and period selectors, and one tab for each catalog of an
/// edition.
class TTERForm final : public ui::Form {
    Q_OBJECT

public:
    /// Creates the window into TERForm and runs FormCreate(). When that fails the window is gone and TERForm
    /// null again.
    static void create(browser::BrowserHost& host);
    ~TTERForm() override;

    QLabel* cxLabel1 = nullptr;
    QFrame* Panel2 = nullptr;
    browser::Selector* cxComboBox1 = nullptr;
    QFrame* Panel3 = nullptr;
    browser::Selector* cxComboBox2 = nullptr;
    QFrame* Panel1 = nullptr;
    QTabWidget* cxPageControl1 = nullptr;

    // The tabs in the order in which they are shown, each with its button panel, button and grid.
    QWidget* cxTabSheet1 = nullptr;
    QFrame* Panel4 = nullptr;
    QPushButton* Button1 = nullptr;
    grid::Grid* cxGrid1 = nullptr;

    QWidget* cxTabSheet2 = nullptr;
    QFrame* Panel5 = nullptr;
    QPushButton* Button2 = nullptr;
    grid::Grid* cxGrid2 = nullptr; ///< beneath cxGrid3, never seen
    grid::Grid* cxGrid3 = nullptr;

    QWidget* cxTabSheet3 = nullptr;
    QFrame* Panel6 = nullptr;
    QPushButton* Button3 = nullptr;
    grid::Grid* cxGrid4 = nullptr;

    QWidget* cxTabSheet4 = nullptr;
    QFrame* Panel7 = nullptr;
    QPushButton* Button4 = nullptr;
    grid::Grid* cxGrid5 = nullptr;

    QWidget* cxTabSheet9 = nullptr;
    QFrame* Panel11 = nullptr;
    QPushButton* Button8 = nullptr;
    grid::Grid* cxGrid9 = nullptr;

    QWidget* cxTabSheet5 = nullptr;
    QFrame* Panel8 = nullptr;
    QPushButton* Button5 = nullptr;
    grid::Grid* cxGrid6 = nullptr;

    QWidget* cxTabSheet6 = nullptr;
    QFrame* Panel9 = nullptr;
    QPushButton* Button6 = nullptr;
    grid::Grid* cxGrid7 = nullptr;

    QWidget* cxTabSheet7 = nullptr;
    QFrame* Panel10 = nullptr;
    QPushButton* Button7 = nullptr;
    grid::Grid* cxGrid8 = nullptr;

    QWidget* cxTabSheet8 = nullptr;
    grid::TreeList* cxDBTreeList1 = nullptr;

    void FormCreate();
    void FormShow();
    void cxComboBox1PropertiesChange();
    void cxComboBox2PropertiesChange();
    void FormCloseQuery(bool& canClose) override;
    void FormClose(ui::CloseAction& action) override;
    void Button1Click() { exportTab(&TTERForm::Button1); }
    void Button2Click() { exportTab(&TTERForm::Button2); }
    void Button3Click() { exportTab(&TTERForm::Button3); }
    void Button4Click() { exportTab(&TTERForm::Button4); }
    void Button5Click() { exportTab(&TTERForm::Button5); }
    void Button6Click() { exportTab(&TTERForm::Button6); }
    void Button7Click() { exportTab(&TTERForm::Button7); }
    void Button8Click() { exportTab(&TTERForm::Button8); }

protected:
    void showEvent(QShowEvent* event) override;
    /// Takes the keys for the page in front that whatever has the focus leaves: a selector, a tab, a button.
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct SelectorSpec;
    struct GridPlace;
    struct TabSpec;
    static std::span<const SelectorSpec> selectors();
    /// In the order in which they are shown.
    static std::span<const TabSpec> tabs();

    explicit TTERForm(browser::BrowserHost& host);
    void createBanner(QVBoxLayout& layout);
    void createSelectors(QVBoxLayout& layout);
    void createBody(QVBoxLayout& layout);
    void createTab(const TabSpec& tab);
    grid::Grid* createGrid(const GridPlace& place, QWidget& sheet, QStackedLayout& stack);
    QFrame* createButtonPanel(const TabSpec& tab, QWidget& sheet);
    void createGridPage(const TabSpec& tab, QWidget& sheet);
    void createTreePage(const TabSpec& tab, QWidget& sheet);
    /// Reads the catalogs of the selection again.
    void reread();
    /// Moves the focus from a selector to the page that has come into view.
    void leaveSelectors(int page);
    void turnPage(int step);
    void openFind();
    /// Marks a selector whose text does not say what the pages show.
    void markSelectors();
    void rememberShownRegion();
    [[nodiscard]] QString regionWarning() const;
    [[nodiscard]] QString shownRegion() const;
    [[nodiscard]] QString printedHeader(const TabSpec& tab) const;
    /// Writes the grid of the tab with that button to a workbook.
    void exportTab(QPushButton* TTERForm::*button);

    browser::BrowserHost& host_;
    QString shownRegion_; // name of the region whose rows are shown; empty before one was found
};

/// The open catalog browser; null while there is none.
extern TTERForm* TERForm;
