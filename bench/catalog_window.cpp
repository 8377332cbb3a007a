// SPDX-License-Identifier: MIT

#include "bench/catalog_window.h"

#include "app/style.h"
#include "bench/measure.h"
#include "bench/screen.h"
#include "browser/ter_form.h"
#include "db/field.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"
#include "ui/fonts.h"

#include <QComboBox>

#include <algorithm>
#include <stdexcept>

namespace bench {

CatalogWindow::CatalogWindow(const QString& server) {
    ui::installFontSubstitutes();
    if (!app::trySetStyle(QStringLiteral("SLATECLASSICO"))) {
        throw std::runtime_error("the visual style is missing");
    }
    module_ = std::make_unique<TDM>();
    DM = module_.get();
    module_->connectTo(server);
    form_ = std::make_unique<TMainForm>();
    static_cast<void>(timeUntilPainted(*form_, [this] { form_->update(); }));
    form_->Action1Execute(*form_);
    if (!TERForm) {
        throw std::runtime_error("the catalog browser has not opened");
    }
    settle();
}

CatalogWindow::~CatalogWindow() {
    delete TERForm;
    DM = nullptr;
}

void CatalogWindow::choose(const Stretch& stretch) {
    static_cast<void>(timeUntilPainted(*TERForm->cxGrid1->view().viewport(), [&] {
        TERForm->cxComboBox1->setCurrentText(regionName(stretch.region));
        TERForm->cxComboBox2->setCurrentText(QString::fromLatin1(stretch.period));
    }));
    requireSame("materials", module_->pFIBDataSet3.rowCount(), stretch.materials);
}

int columnOf(const grid::TableModel& model, const QString& field) {
    const auto& columns = model.columns();
    const auto found = std::ranges::find(columns, field, [](const grid::Column* column) {
        return column->field() ? column->field()->column() : QString();
    });
    return static_cast<int>(found - columns.begin());
}

} // namespace bench
