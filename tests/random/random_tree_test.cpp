// SPDX-License-Identifier: MIT

#include "data/data_modul.h"
#include "db/data_source.h"
#include "grid/tree/tree_header.h"
#include "grid/tree/tree_list.h"
#include "grid/tree/tree_view.h"
#include "random/reference.h"
#include "support/firebird_server.h"
#include "support/random.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>

namespace {

constexpr std::array fields{db::bigint(u"ID"), db::bigint(u"PARENTID"), db::text(u"NAME", 1000)};
constexpr std::array columns{grid::ColumnSpec{u"ID", u"ID"},
                             grid::ColumnSpec{u"PARENTID", u"PARENTID", false},
                             grid::ColumnSpec{u"NAME", u"NAME"}};
constexpr grid::TreeListSpec spec{u"tree", columns, u"ID", u"PARENTID"};
constexpr int root = grid::TreeStructure::root;
constexpr int count = 200;

/// A tree view beside a tree of its own, which is walked through for every answer.
class RandomTree : public testing::TestWithParam<std::uint32_t> {
protected:
    RandomTree() {
        static_cast<void>(test::makeRandomRows(test::sampleServer, random_, count));
        module_.connectTo(test::sampleServer);
        dataSet_.open();
        list_.resize(400, 300);
        list_.show();
        std::vector<reference::Key> keys;
        for (int row = 0; row < count; ++row) {
            for (const int column : {0, 2}) {
                const db::Field& field = *dataSet_.fields()[static_cast<std::size_t>(column)];
                cells_[column].push_back(
                    {dataSet_.text(row, field), dataSet_.rows().isNull(row, column), column == 0});
            }
            const auto number = [&](int column) {
                return dataSet_.rows().isNull(row, column)
                           ? std::nullopt
                           : std::optional(dataSet_.rows().integer(row, column));
            };
            keys.push_back({number(0), number(1)});
        }
        for (const auto& [column, cells] : cells_) {
            places_[column] = std::vector<reference::Place>(cells.begin(), cells.end());
        }
        parents_ = reference::parentsOf(keys);
        follow(dataSet_.currentRow());
    }

    [[nodiscard]] int parentOf(int node) const { return parents_[static_cast<std::size_t>(node)]; }

    [[nodiscard]] bool isBeneath(int node, int ancestor) const {
        while (node != root && node != ancestor) {
            node = parentOf(node);
        }
        return node == ancestor;
    }

    [[nodiscard]] bool isHit(int node) const {
        return std::ranges::any_of(cells_, [&](const auto& column) {
            return reference::holdsWords(column.second[static_cast<std::size_t>(node)], words_);
        });
    }

    [[nodiscard]] bool isShown(int node) const {
        for (int other = 0; other < count; ++other) {
            if (isBeneath(other, node) && isHit(other)) {
                return true;
            }
        }
        return false;
    }

    struct Row {
        int node;
        int depth;
        bool operator==(const Row&) const = default;
        friend void PrintTo(const Row& row, std::ostream* out) { *out << row.node << '.' << row.depth; }
    };

    /// What stands beneath a node; all of it, or only what is expanded.
    void collect(std::vector<Row>& rows, int parent, int depth, bool all) const {
        std::vector<int> children;
        for (int node = 0; node < count; ++node) {
            if (parentOf(node) == parent && shown_[static_cast<std::size_t>(node)]) {
                children.push_back(node);
            }
        }
        if (sortColumn_ >= 0) {
            std::ranges::stable_sort(children, [&](int left, int right) {
                const auto [first, second] = descending_ ? std::pair(right, left) : std::pair(left, right);
                const std::vector<reference::Place>& places = places_.at(sortColumn_);
                return places[static_cast<std::size_t>(first)] < places[static_cast<std::size_t>(second)];
            });
        }
        for (const int node : children) {
            rows.push_back({node, depth});
            if (all || expanded_.contains(node)) {
                collect(rows, node, depth + 1, all);
            }
        }
    }

    [[nodiscard]] std::vector<Row> rows(bool all) const {
        std::vector<Row> rows;
        collect(rows, root, 0, all);
        return rows;
    }

    void expandBranch(int node) {
        for (int member = 0; member < count; ++member) {
            if (node == root || isBeneath(member, node)) {
                expanded_.insert(member);
            }
        }
    }

    /// The dataset's row, with all its ancestors open, where it is shown.
    void follow(int row) {
        current_ = shown_[static_cast<std::size_t>(row)] ? row : root;
        for (int node = current_; node != root; node = parentOf(node)) {
            if (parentOf(node) != root) {
                expanded_.insert(parentOf(node));
            }
        }
    }

    void search(const QStringList& words) {
        if (words_.isEmpty() && !words.isEmpty()) {
            saved_ = expanded_;
        }
        if (words.isEmpty() && !words_.isEmpty()) {
            expanded_ = saved_;
        } else if (!words.isEmpty()) {
            expandBranch(root);
        }
        words_ = words;
        for (int node = 0; node < count; ++node) {
            shown_[static_cast<std::size_t>(node)] = words.isEmpty() || isShown(node);
        }
        follow(dataSet_.currentRow());
    }

    test::Random random_{GetParam()};
    TDM module_;
    db::DataSet dataSet_{"dataSet",
                         fields,
                         {"select ID, PARENTID, NAME from RANDOM_ROWS order by NR"},
                         module_.pFIBDatabase1,
                         module_.RFIBTransaction,
                         nullptr};
    db::DataSource source_{"source", dataSet_, nullptr};
    grid::TreeList list_{spec, source_, nullptr};

    std::map<int, std::vector<reference::Cell>> cells_;
    std::map<int, std::vector<reference::Place>> places_;
    std::vector<int> parents_;
    std::vector<bool> shown_ = std::vector<bool>(count, true);
    std::set<int> expanded_, saved_;
    QStringList words_;
    int sortColumn_ = -1;
    bool descending_ = false;
    int current_ = root;
};

TEST_P(RandomTree, StandsAsAPlainTreeWould) {
    grid::TreeView& view = list_.view();
    const QAbstractItemModelTester tester(&view.treeModel(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (int step = 0; step < 300; ++step) {
        const std::vector<Row> before = rows(false);
        const int node = before.empty() ? root : random_.oneOf(before).node;
        const int choice = random_.below(node == root ? 2 : 8);
        switch (choice) {
        case 0: {
            const auto& cells = cells_[2 * random_.below(2)];
            const QString text = QString(random_.oneOf(cells).text).remove(u'"').simplified();
            search(random_.oneIn(3) ? QStringList()
                                    : text.mid(random_.below(9), 3).split(u' ', Qt::SkipEmptyParts));
            view.setSearch(words_.join(u' '));
            break;
        }
        case 1:
            sortColumn_ = random_.below(2) == 0 ? -1 : 2 * random_.below(2);
            descending_ = random_.oneIn(2);
            view.treeModel().sort(sortColumn_, descending_ ? Qt::DescendingOrder : Qt::AscendingOrder);
            break;
        case 2:
            dataSet_.moveTo(random_.below(count));
            follow(dataSet_.currentRow());
            break;
        case 3:
            expandBranch(node);
            view.expandBranch(node);
            break;
        case 4: {
            const std::vector<Row> all = rows(true);
            std::vector<int> hits;
            for (const Row& row : all) {
                if (isHit(row.node)) {
                    hits.push_back(row.node);
                }
            }
            if (words_.isEmpty()) {
                break;
            }
            EXPECT_EQ(view.treeModel().hits(), hits);
            const auto start = std::ranges::find(all, current_, &Row::node);
            const auto next = std::find_if(start == all.end() ? all.begin() : start + 1, all.end(),
                                           [&](const Row& row) { return isHit(row.node); });
            view.findNext();
            follow(next == all.end() ? hits.front() : next->node);
            break;
        }
        default:
            if (expanded_.contains(node)) {
                expanded_.erase(node);
                current_ = current_ != root && isBeneath(current_, node) ? node : current_;
            } else {
                expanded_.insert(node);
            }
            view.setExpanded(node, expanded_.contains(node));
        }
        std::vector<Row> shown;
        shown.reserve(static_cast<std::size_t>(view.rows().count()));
        for (int row = 0; row < view.rows().count(); ++row) {
            shown.push_back({view.rows().at(row).node, view.rows().at(row).depth});
        }
        ASSERT_EQ(shown, rows(false))
            << "step " << step << ", choice " << choice << ' ' << sortColumn_ << descending_;
        ASSERT_EQ(grid::TreeModel::node(view.currentIndex()), current_)
            << "step " << step << ", choice " << choice;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomTree, testing::ValuesIn(test::seeds()));

} // namespace
