// SPDX-License-Identifier: MIT

#include "browser/grid_export.h"
#include "grid/rows/cell_search.h"
#include "grid/table/grid_fixture.h"
#include "random/reference.h"
#include "support/random.h"
#include "support/workbook.h"

#include <QLabel>
#include <QMimeData>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QTemporaryDir>

#include <algorithm>
#include <map>
#include <ranges>
#include <set>

namespace grid {

namespace {

constexpr std::array searched{kod, name, price};

/// A filter with what it says in the reference's words.
struct RandomFilter {
    ColumnFilter filter;
    QStringList words;
    std::vector<reference::Comparison> comparisons;
    std::set<QString> values;

    [[nodiscard]] bool passes(const reference::Cell& cell) const {
        const bool isListed = values.contains(cell.text);
        return reference::holdsWords(cell, words) && reference::holdsComparisons(cell, comparisons) &&
               (filter.rule == ColumnFilter::Values::Any ||
                isListed == (filter.rule == ColumnFilter::Values::Only));
    }
};

/// What a spreadsheet makes of text with tabs between the cells.
std::vector<QStringList> pasted(const QString& text) {
    std::vector<QStringList> rows{{QString()}};
    bool isQuoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        QString& cell = rows.back().back();
        if (text[i] == u'"' && isQuoted && text.mid(i + 1, 1) == u'"') {
            cell += text[i++];
        } else if (text[i] == u'"') {
            isQuoted = !isQuoted;
        } else if (isQuoted || (text[i] != u'\t' && text[i] != u'\n')) {
            cell += text[i];
        } else if (text[i] == u'\t') {
            rows.back().append(QString());
        } else {
            rows.push_back({QString()});
        }
    }
    rows.pop_back();
    return rows;
}

/// The cells of a table in HTML, one after the other.
QStringList cellsOf(const QString& html) {
    static const QRegularExpression cells(QStringLiteral("<td[^>]*>(.*?)</td>"),
                                          QRegularExpression::DotMatchesEverythingOption);
    QStringList texts;
    for (auto cell = cells.globalMatch(html); cell.hasNext();) {
        QString text = cell.next().captured(1);
        text.replace(QRegularExpression("<br[^>]*>"), "\n").remove(QRegularExpression("<[^>]*>"));
        texts += text.replace("&nbsp;", " ").replace("&lt;", "<").replace("&gt;", ">").replace("&amp;", "&");
    }
    return texts;
}

} // namespace

class RandomGrid : public GridTest, public testing::WithParamInterface<std::uint32_t> {
protected:
    /// Shows 250 random rows, each so many times.
    void openRows(int times) {
        rows_ = test::makeRandomRows(test::sampleServer, random_, 250);
        open(QStringLiteral("select cast(NR as bigint) as ID, KOD, NAME, PRICE from RANDOM_ROWS cross join "
                            "(select first %1 1 as ONE from RDB$TYPES) order by mod(NR, 7), NR")
                 .arg(times));
        for (int row = 0; row < dataSet.rowCount(); ++row) {
            for (int column = 0; column < absent; ++column) {
                const db::Field& field = *model().column(column).field();
                cells_[column].push_back(
                    {model().text(row, column), dataSet.rows().isNull(row, field.index()), field.isNumber()});
            }
        }
    }

    [[nodiscard]] const reference::Cell& cell(int row, int column) {
        return cells_[column][static_cast<std::size_t>(row)];
    }

    /// Words that stand in some cell of a column, in another case, or nowhere.
    QStringList randomWords(int column) {
        QStringList words;
        for (int left = random_.below(3); left >= 0; --left) {
            QString text = cell(random_.below(dataSet.rowCount()), column).text;
            text.remove(u'"');
            text = text.mid(random_.below(static_cast<int>(text.size()) + 1), 1 + random_.below(6));
            words += random_.oneIn(2) ? text.toUpper() : random_.oneIn(2) ? text.replace(u',', u'.') : text;
        }
        words.removeAll(QString());
        return random_.oneIn(10) ? words << "Ω" : words;
    }

    /// As a user types them.
    QString typed(const QStringList& words) {
        QString text;
        for (const QString& word : words) {
            const bool needsQuotes = std::ranges::any_of(word, [](QChar each) { return each.isSpace(); });
            text += (needsQuotes || random_.oneIn(4) ? u'"' + word + u'"' : word) +
                    QString(1 + random_.below(2), u' ');
        }
        return text;
    }

    QString randomBound(int column) {
        static const QRegularExpression number("\\A-?\\d{1,17}([.,]\\d{1,9})?\\z");
        const QString text = cell(random_.below(dataSet.rowCount()), column).text;
        const QString digits =
            number.match(text).hasMatch() ? text : QString::number(random_.below(2000) - 1000);
        return digits.contains(u',') && random_.oneIn(2) ? digits + "01" : digits;
    }

    RandomFilter randomFilter(int column) {
        static constexpr QStringView signs[]{u"<", u"<=", u">", u">=", u"=", u"<>"};
        RandomFilter result;
        switch (random_.below(3)) {
        case 0:
            result.words = randomWords(column);
            result.filter.containedText = typed(result.words);
            break;
        case 1: {
            QString text;
            for (int left = random_.below(2); left >= 0; --left) {
                result.comparisons.push_back({random_.oneOf(signs).toString(), randomBound(column)});
                text += result.comparisons.back().sign + ' ' + result.comparisons.back().bound + ' ';
            }
            result.filter.condition = NumberCondition::read(text).condition;
            EXPECT_TRUE(result.filter.condition) << text.toStdString();
            break;
        }
        default:
            result.filter.rule = random_.oneIn(2) ? ColumnFilter::Values::Only : ColumnFilter::Values::AllBut;
            for (int left = random_.below(40); left > 0; --left) {
                const int row = random_.below(dataSet.rowCount());
                result.filter.values.insert(
                    toValue(cellView(dataSet.rows(), row, *model().column(column).field())));
                result.values.insert(cell(row, column).text);
            }
        }
        return result;
    }

    /// Filters and sorts model and reference alike; returns the rows that the reference shows.
    std::vector<int> arrange() {
        filters_.clear();
        std::vector<SortColumn> order;
        for (const int column : searched) {
            if (random_.oneIn(3)) {
                filters_[column] = randomFilter(column);
            }
            if (random_.oneIn(2)) {
                order.insert(order.begin() + random_.below(static_cast<int>(order.size()) + 1),
                             SortColumn{column, random_.oneIn(2)});
            }
        }
        model().clearFilters();
        for (const auto& [column, each] : filters_) {
            model().setFilter(column, each.filter);
        }
        model().sortBy(order);

        std::vector<int> rows = rowsLeft(absent);
        for (const SortColumn& sort : std::views::reverse(order)) {
            std::ranges::stable_sort(rows, [&](int left, int right) {
                const auto& places = placesOf(sort.column);
                const auto [first, second] =
                    sort.descending ? std::pair(right, left) : std::pair(left, right);
                return places[static_cast<std::size_t>(first)] < places[static_cast<std::size_t>(second)];
            });
        }
        return rows;
    }

    /// The rows that all filters but that of one column leave.
    std::vector<int> rowsLeft(int exempt) {
        std::vector<int> rows;
        for (int row = 0; row < dataSet.rowCount(); ++row) {
            if (std::ranges::all_of(filters_, [&](const auto& each) {
                    return each.first == exempt || each.second.passes(cell(row, each.first));
                })) {
                rows.push_back(row);
            }
        }
        return rows;
    }

    const std::vector<reference::Place>& placesOf(int column) {
        auto& places = places_[column];
        if (places.empty()) {
            places = std::vector<reference::Place>(cells_[column].begin(), cells_[column].end());
        }
        return places;
    }

    test::Random random_{GetParam()};
    std::vector<test::RandomRow> rows_;
    std::map<int, std::vector<reference::Cell>> cells_; // by column, in the dataset's order
    std::map<int, std::vector<reference::Place>> places_;
    std::map<int, RandomFilter> filters_;
};

TEST_P(RandomGrid, ShowsCopiesAndWritesWhatTheServerHolds) {
    openRows(1);
    // The bytes as the server tells them to somebody else, in hexadecimal digits.
    const QStringList lines =
        test::runSql(test::sampleServer,
                     "set list on; select NR, KOD, cast(NAME as varchar(1000) character set octets) "
                     "as NAME, PRICE from RANDOM_ROWS order by mod(NR, 7), NR;")
            .split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 4 * dataSet.rowCount());
    QStringDecoder decode("windows-1251");
    for (int row = 0; row < dataSet.rowCount(); ++row) {
        for (int column = 0; column < absent; ++column) {
            const QString told = lines[4 * row + column].mid(32).trimmed();
            const QString held = column == name ? decode(QByteArray::fromHex(told.toLatin1()))
                                                : QString(told).replace('.', ',');
            EXPECT_EQ(model().text(row, column), told == "<null>" ? QString() : held) << row << ' ' << column;
        }
        const auto& inserted = rows_[model().text(row, 0).toULongLong()].name.value_or(QByteArray());
        EXPECT_EQ(dataSet.rows().string(row, dataSet.field("NAME").index()), inserted.toStdString()) << row;
    }

    static const QRegularExpression control("[\\x00-\\x09\\x0B-\\x1F]");
    const QTemporaryDir folder;
    for (int round = 0; round < 3; ++round) {
        const std::vector<int> rows = arrange();
        if (rows.empty()) {
            continue;
        }
        view().selectAll();
        copied();
        const QMimeData& clipboard = *QApplication::clipboard()->mimeData();
        std::vector<QStringList> shown;
        QStringList inHtml;
        for (int row = 0; row < model().rowCount(); ++row) {
            QStringList texts;
            for (const int column : view().header().visibleColumns()) {
                texts += model().text(row, column);
                inHtml +=
                    QString(texts.back()).replace("\r\n", "\n").replace('\r', '\n').replace(control, " ");
            }
            shown.push_back(texts);
        }
        EXPECT_EQ(pasted(clipboard.text()), shown);
        EXPECT_EQ(cellsOf(clipboard.html()), inHtml);
        browser::exportGrid(&grid(), folder.path() + '/', "book", {});
        test::expectShown(test::readWorkbook(folder.filePath("book.xlsx")), view());
    }
}

TEST_P(RandomGrid, OrdersFiltersAndCountsAsWrittenOut) {
    openRows(10);
    for (int round = 0; round < 40 && !HasFailure(); ++round) {
        const std::vector<int> expected = arrange();
        std::vector<int> shown;
        for (int row = 0; row < model().rowCount(); ++row) {
            shown.push_back(model().dataSetRow(row));
        }
        ASSERT_EQ(shown, expected) << round << ' ' << child<QLabel>("FilterBarWords").text().toStdString();

        const int column = random_.oneOf(searched);
        std::map<QString, int> counts;
        for (const int row : rowsLeft(column)) {
            ++counts[cell(row, column).text];
        }
        for (const QString& value : filters_[column].values) {
            counts.try_emplace(value);
        }
        std::map<QString, int> offered;
        std::vector<reference::Place> places;
        for (const CountedValue& each : model().valuesToFilter(column)) {
            const db::Field& field = *model().column(column).field();
            const QString text = cellValueText(each.value, field, model().decimalPoint());
            EXPECT_TRUE(offered.emplace(text, each.rows).second) << text.toStdString();
            places.emplace_back(reference::Cell{text, text.isEmpty(), field.isNumber()});
        }
        EXPECT_EQ(offered, counts);
        EXPECT_TRUE(std::ranges::is_sorted(places));
    }
}

TEST_P(RandomGrid, FindsWhatAPlainSearchFinds) {
    openRows(10);
    for (int round = 0; round < 40 && !HasFailure(); ++round) {
        arrange();
        std::vector<int> among(searched.begin(), searched.end());
        std::rotate(among.begin(), among.begin() + random_.below(3), among.end());
        const QStringList words = randomWords(random_.oneOf(searched));
        std::vector<CellPlace> hits;
        for (int row = 0; row < model().rowCount() && !words.isEmpty(); ++row) {
            for (const int column : among) {
                if (reference::holdsWords(cell(model().dataSetRow(row), column), words)) {
                    hits.push_back({row, column});
                }
            }
        }
        CellSearch search(model(), among, typed(words));
        for (int left = 20; left > 0; --left) {
            // Looks before all rows have been gone through, too.
            search.goOn();
            const bool forward = random_.oneIn(2);
            const bool includeFrom = random_.oneIn(2);
            const CellPlace from{random_.below(model().rowCount() + 1) - 1, random_.oneOf(among)};
            const auto order = [&](CellPlace place) {
                const auto column = std::ranges::find(among, place.column) - among.begin();
                return std::pair(place.row, column);
            };
            std::vector<CellPlace> ahead = hits;
            std::erase_if(ahead, [&](CellPlace hit) {
                return from.row < 0 ? !forward
                                    : !(includeFrom && hit == from) &&
                                          (forward ? order(hit) <= order(from) : order(hit) >= order(from));
            });
            const std::vector<CellPlace>& candidates = ahead.empty() ? hits : ahead;
            CellSearch::Next next = search.next(from, forward, includeFrom);
            while (!next.isKnown) {
                next = search.next(from, forward, includeFrom);
            }
            ASSERT_EQ(next.place, candidates.empty()
                                      ? std::nullopt
                                      : std::optional(forward ? candidates.front() : candidates.back()))
                << round << ' ' << words.join('|').toStdString();
        }
        while (!search.isComplete()) {
            search.goOn();
        }
        EXPECT_EQ(search.hitCount(), std::ssize(hits)) << words.join('|').toStdString();
        for (std::size_t i = 0; i < hits.size(); i += 1 + hits.size() / 50) {
            EXPECT_EQ(search.numberOf(hits[i]), static_cast<std::int64_t>(i) + 1);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomGrid, testing::ValuesIn(test::seeds()));

} // namespace grid
