#include "bench/bare_text.h"
#include "bench/catalog_window.h"
#include "bench/rows.h"
#include "bench/screen.h"
#include "browser/ter_form.h"
#include "grid/tree/tree_find_panel.h"
#include "grid/tree/tree_list.h"
#include "grid/tree/tree_view.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTabWidget>

#include <algorithm>
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

struct Keystroke {
    int key;
    QString character;
};

/// A letter that nearly all names hold, then a rarer and rarer text, then back to the whole tree.
std::vector<Keystroke> keystrokes() {
    std::vector<Keystroke> strokes;
    const QString text = QStringLiteral("а 4321");
    for (const QChar character : text) {
        strokes.push_back({0, character});
    }
    strokes.insert(strokes.end(), static_cast<std::size_t>(text.size()), {Qt::Key_Backspace, QString()});
    return strokes;
}

void type(QWidget& target, const Keystroke& stroke) {
    for (const QEvent::Type kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(kind, stroke.key, Qt::NoModifier, stroke.character);
        QCoreApplication::sendEvent(&target, &event);
    }
}

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
    QLineEdit& findText = window.findText();
    const std::vector<Keystroke> strokes = keystrokes();
    std::vector<Medians> each;
    std::vector<std::vector<double>> ours(strokes.size());
    std::vector<std::vector<double>> bare(strokes.size());
    for (int round = 0; round <= rounds; ++round) {
        for (std::size_t index = 0; index < strokes.size(); ++index) {
            const double taken =
                timeUntilPainted(*window.view().viewport(), [&] { type(findText, strokes[index]); });
            int matches = 0;
            const double bareTaken =
                timeOf([&] { matches = countMatches(window.dataSet(), findText.text()); });
            if (matches == 0 || window.view().rows().count() == 0) {
                throw std::runtime_error("the find panel's text is nowhere in the tree");
            }
            if (round > 0) {
                ours[index].push_back(taken);
                bare[index].push_back(bareTaken);
            }
        }
        requireSame("characters left", findText.text().size(), 0);
    }
    for (std::size_t index = 0; index < strokes.size(); ++index) {
        each.push_back({median(ours[index]), median(bare[index])});
    }
    const Medians worst = *std::ranges::max_element(each, {}, &Medians::ours);
    return {{QStringLiteral("tree-find"), QStringLiteral("worst keystroke in the find panel, until painted"),
             worst.ours, worst.bare, QStringLiteral("ms"), LimitOf::Value, 60}};
}

} // namespace bench
