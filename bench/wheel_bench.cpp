// SPDX-License-Identifier: MIT

#include "bench/catalog.h"
#include "bench/rows.h"
#include "bench/screen.h"
#include "browser/grid_columns.h"
#include "data/catalog_fields.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"
#include "ui/fonts.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <QStackedWidget>
#include <QWheelEvent>

#include <stdexcept>

namespace bench {

namespace {

constexpr QSize screenSize(1920, 1080);
constexpr int places = 40;
constexpr int stepsAtPlace = 5;

constexpr grid::GridSpec spec{u"grid", u"level", u"view", browser::columnsOf<data::fields::materials>,
                              u"KOD"};

/// The materials of a stretch in a grid of their own.
struct Materials {
    Materials(const Stretch& stretch, const QString& server, QStackedWidget& window)
        : grid(new grid::Grid(spec, module.DataSource3, &window)) {
        module.connectTo(server);
        openMaterials(module, stretch);
        window.addWidget(grid);
    }

    TDM module;
    grid::Grid* grid; // child of the window
};

void turnWheel(QWidget& viewport) {
    constexpr int notch = 120;
    const QPointF centre = viewport.rect().center();
    QWheelEvent event(centre, viewport.mapToGlobal(centre), QPoint(), QPoint(0, -notch), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&viewport, &event);
}

/// Appends the times of some steps from a place that lies `place` / `places` of the rows down.
void addSteps(grid::TableView& view, int place, std::vector<double>& taken) {
    QScrollBar& scrollBar = *view.verticalScrollBar();
    const auto jump = [&] {
        scrollBar.setValue(static_cast<int>(static_cast<std::int64_t>(scrollBar.maximum()) * place / places));
    };
    if (place == 0) {
        jump();
        settle();
    } else {
        static_cast<void>(timeUntilPainted(*view.viewport(), jump));
    }
    for (int step = 0; step < stepsAtPlace; ++step) {
        taken.push_back(timeUntilPainted(*view.viewport(), [&] { turnWheel(*view.viewport()); }));
    }
}

} // namespace

std::vector<Result> measureWheel(const Surroundings& surroundings) {
    ui::installFontSubstitutes();
    QStackedWidget window;
    window.setFont(ui::pixelFont(QStringLiteral("Calibri"), 16));
    Materials many(million, surroundings.server, window);
    Materials few(thousand, surroundings.server, window);
    static_cast<void>(timeUntilPainted(*many.grid->view().viewport(), [&] { window.showFullScreen(); }));
    if (window.size() != screenSize) {
        throw std::runtime_error("the screen must have 1920 x 1080 points");
    }

    std::vector<double> manyTaken;
    std::vector<double> fewTaken;
    // The first and the last place are left out: a step there may show fewer new rows.
    for (int place = 0; place < places; ++place) {
        for (auto [materials, taken] : {std::pair(&many, &manyTaken), std::pair(&few, &fewTaken)}) {
            window.setCurrentWidget(materials->grid);
            settle();
            addSteps(materials->grid->view(), place, *taken);
        }
        if (place == 0) {
            manyTaken.clear();
            fewTaken.clear();
        }
    }
    const double ours = median(std::move(manyTaken));
    const double bare = median(std::move(fewTaken));
    const QString ms = QStringLiteral("ms");
    return {
        {QStringLiteral("wheel"), QStringLiteral("wheel step at 1,000,000 rows (bare: at 1,000)"), ours, bare,
         ms, LimitOf::Ratio, 1.25},
        {QStringLiteral("wheel-step"), QStringLiteral("the same step"), ours, bare, ms, LimitOf::Value, 8}};
}

} // namespace bench
