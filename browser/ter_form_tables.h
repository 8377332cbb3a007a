// SPDX-License-Identifier: MIT

#pragma once

#include "browser/ter_form.h"
#include "grid/table/grid_spec.h"
#include "grid/tree/tree_list.h"

#include <QStringView>

namespace db {
class DataSource;
}
class TDM;

/// A selector of the bar at the top, and the panel that keeps the next one away from it.
struct TTERForm::SelectorSpec {
    struct Control {
        browser::Selector* TTERForm::*member = nullptr;
        const char* name = nullptr;
        int width = 0; ///< pixels
        void (TTERForm::*handler)() = nullptr;
    };

    struct Panel {
        QFrame* TTERForm::*member = nullptr;
        const char* name = nullptr;
        int width = 0; ///< pixels
    };

    Control control;
    QStringView initialText;
    QStringView hint;
    Panel gap = {};
};

/// A grid of a tab and what it is bound to.
struct TTERForm::GridPlace {
    grid::Grid* TTERForm::*member = nullptr;
    db::DataSource TDM::*source = nullptr;
    grid::GridSpec spec = {};
};

/// All of a tab: with a button panel and a grid, which may cover another one, or with a tree.
struct TTERForm::TabSpec {
    struct Sheet {
        QWidget* TTERForm::*member = nullptr;
        const char* name = nullptr;
        QStringView caption;
    };

    struct Panel {
        QFrame* TTERForm::*member = nullptr;
        const char* name = nullptr;
    };

    struct Button {
        QPushButton* TTERForm::*member = nullptr;
        const char* name = nullptr;
        void (TTERForm::*handler)() = nullptr;
    };

    /// How the tab's workbook is called after the banner.
    struct FileName {
        QStringView fixedText = {};
        bool ofSelection = false; ///< followed by region and period
    };

    struct TreePlace {
        grid::TreeList* TTERForm::*member = nullptr;
        db::DataSource TDM::*source = nullptr;
        grid::TreeListSpec spec = {};
    };

    Sheet sheet;
    Panel panel = {};
    Button button = {};
    FileName file = {};
    GridPlace shown = {};
    GridPlace covered = {};
    TreePlace tree = {};
};
