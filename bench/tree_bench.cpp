// SPDX-License-Identifier: MIT

#include "bench/bare_text.h"
#include "bench/catalog_window.h"
#include "bench/keystrokes.h"
#include "bench/rows.h"
#include "bench/screen.h"
#include "browser/ter_form.h"
#include "grid/tree/tree_find_panel.h"
#include "grid/tree/tree_list.h"
#include "grid/tree/tree_view.h"

#include <QLineEdit>
#include <QTabWidget>

#include <stdexcept>

namespace bench {

namespace {

constexpr int rounds = 9;
constexpr int nodes = 100'000;

/// The catalog tree on screen.
class TreeWindow final {
public:
    explicit TreeWindow(const QString& server) : window_(server) {
        static_cast<void>(timeUntilPainted(
            *view().viewport(), [] { TERForm->cxPageControl1->setCurrentWidget(TERForm->cxTabSheet8); }));
        requireSame("nodes", dataSet().rowCount(), nodes);
    }

    [[nodiscard]] TDM& module() { return window_.module(); }
    [[nodiscard]] db::DataSet& dataSet() { return module().pFIBDataSet9; }
    [[nodiscard]] grid::TreeView& view() { return TERForm->cxDBTreeList1->view(); }
    [[nodiscard]] QLineEdit& findText() { return *TERForm->cxDBTreeList1->findChild<QLineEdit*>(); }

private:
    CatalogWindow window_;
};

int countMatches(const db::DataSet& dataSet, const QString& text) {
    int count = 0;
    for (const char* column : {"NAME", "TREE"}) {
        count += countContaining(dataSet.rows(), dataSet.field(QString::fromLatin1(column)).index(), text);
    }
    return count;
}

} // namespace

std::vector<Result> measureTree(const Surroundings& surroundings) {
    TreeWindow window(surroundings.server);
    db::DataSet& dataSet = window.dataSet();
    BareQuery query(window.module(), dataSet);
    const Medians medians = alternate(
        rounds,
        [&](int) {
            dataSet.close();
            return timeUntilPainted(*window.view().viewport(), [&] { dataSet.open(); });
        },
        [&](int) {
            int read = 0;
            const double taken = timeOf([&] { read = query.read(); });
            requireSame("nodes", nodes, read);
            return taken;
        });
    return {{QStringLiteral("tree"), QStringLiteral("open the tree, 100,000 nodes, until painted"),
             medians.ours, medians.bare, QStringLiteral("ms"), LimitOf::Difference, 80}};
}

std::vector<Result> measureTreeFind(const Surroundings& surroundings) {
    TreeWindow window(surroundings.server);
    const Medians worst = worstKeystroke(
        rounds, window.findText(), *window.view().viewport(), QStringLiteral("а 4321"),
        [&](const QString& text) {
            if (countMatches(window.dataSet(), text) == 0 || window.view().rows().count() == 0) {
                throw std::runtime_error("the find panel's text is nowhere in the tree");
            }
        });
    return {{QStringLiteral("tree-find"), QStringLiteral("worst keystroke in the find panel, until painted"),
             worst.ours, worst.bare, QStringLiteral("ms"), LimitOf::Value, 60}};
}

} // namespace bench
