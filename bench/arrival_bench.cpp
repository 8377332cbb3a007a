// SPDX-License-Identifier: MIT

#include "bench/catalog.h"
#include "bench/rows.h"
#include "bench/screen.h"
#include "browser/grid_columns.h"
#include "data/catalog_fields.h"
#include "data/selection.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"
#include "ui/fonts.h"

#include <QElapsedTimer>
#include <QStackedWidget>

#include <optional>

namespace bench {

namespace {

constexpr int rounds = 7;
constexpr double nanosecondsPerMillisecond = 1e6;

constexpr grid::GridSpec spec{u"grid", u"level", u"view", browser::columnsOf<data::fields::materials>,
                              u"KOD"};

/// A grid for the million materials, with a data module of its own.
class Materials final {
public:
    Materials(const QString& server, QStackedWidget& window)
        : window_(window), grid_(new grid::Grid(spec, module_.DataSource3, &window)) {
        module_.connectTo(server);
        data::bindSelection(dataSet(), period(), million.region);
        window_.addWidget(grid_);
        // After the view's own connection, which paints.
        QObject::connect(&dataSet(), &db::DataSet::rowsArrived, grid_, [this] { noteFirstRows(); });
    }

    /// Has the grid show nothing before all rows have come.
    void showOnlyAll() { QObject::disconnect(&dataSet(), &db::DataSet::rowsArrived, nullptr, nullptr); }

    /// Milliseconds until all rows have come and the grid is painted.
    double open() {
        window_.setCurrentWidget(grid_);
        const double taken = timeUntilPainted(viewport(), [this] {
            firstRows_.reset();
            watch_.emplace(viewport());
            start_.start();
            dataSet().open();
        });
        requireSame("materials", dataSet().rowCount(), million.materials);
        dataSet().close();
        return taken;
    }

    /// Milliseconds until the first rows of the last opening were painted.
    [[nodiscard]] double firstRows() const { return firstRows_.value(); }

    /// Milliseconds until the client library alone has the first row.
    double bareFirstRow() {
        return BareQuery(module_, dataSet()).timeUntilFirstRow(period(), million.region);
    }

private:
    [[nodiscard]] static QString period() { return QString::fromLatin1(million.period); }
    [[nodiscard]] db::DataSet& dataSet() { return module_.pFIBDataSet3; }
    [[nodiscard]] QWidget& viewport() { return *grid_->view().viewport(); }

    void noteFirstRows() {
        if (!firstRows_ && watch_->isPainted()) {
            waitForServer();
            firstRows_ = static_cast<double>(start_.nsecsElapsed()) / nanosecondsPerMillisecond;
        }
    }

    QStackedWidget& window_;
    TDM module_;
    grid::Grid* grid_; // child of the window
    QElapsedTimer start_;
    std::optional<PaintWatch> watch_;
    std::optional<double> firstRows_;
};

} // namespace

std::vector<Result> measureFirstRows(const Surroundings& surroundings) {
    ui::installFontSubstitutes();
    QStackedWidget window;
    window.setFont(ui::pixelFont(QStringLiteral("Calibri"), 16));
    Materials early(surroundings.server, window);
    Materials late(surroundings.server, window);
    late.showOnlyAll();
    window.showFullScreen();
    settle();

    std::vector<double> firstRows;
    std::vector<double> bareFirstRows;
    const Medians whole = alternate(
        rounds,
        [&](int round) {
            const double taken = early.open();
            if (round > 0) {
                firstRows.push_back(early.firstRows());
                bareFirstRows.push_back(early.bareFirstRow());
            }
            return taken;
        },
        [&](int) { return late.open(); });
    const QString ms = QStringLiteral("ms");
    return {{QStringLiteral("first-rows"), QStringLiteral("first rows of 1,000,000 painted (bare: fetched)"),
             median(std::move(firstRows)), median(std::move(bareFirstRows)), ms, LimitOf::Difference, 60},
            {QStringLiteral("open-whole"), QStringLiteral("all of them painted (bare: without the first)"),
             whole.ours, whole.bare, ms, LimitOf::Ratio, 1.03}};
}

} // namespace bench
