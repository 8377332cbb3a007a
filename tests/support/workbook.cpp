// SPDX-License-Identifier: MIT

#include "support/workbook.h"

#include "db/field.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"
#include "grid/table/table_view.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>

namespace test {

QJsonObject readWorkbook(const QString& path) {
    QProcess reader;
    reader.start("/usr/bin/python3", {QStringLiteral(TARVELO_SOURCE_DIR "/tests/read_workbook.py"), path});
    EXPECT_TRUE(reader.waitForFinished(60'000) && reader.exitCode() == 0)
        << reader.readAllStandardError().toStdString();
    return QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
}

QJsonObject cell(const QJsonObject& workbook, int row, int column) {
    return workbook["rows"][row][column].toObject();
}

void expectShown(const QJsonObject& workbook, const grid::TableView& view) {
    const auto columns = view.visibleColumns();
    const grid::TableModel& model = view.tableModel();
    const int rows = model.rowCount();
    ASSERT_EQ(workbook["rows"].toArray().size(), rows + 2);
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
        const grid::Column& column = *columns[static_cast<std::size_t>(i)];
        EXPECT_EQ(cell(workbook, 0, i)["value"].toString(), column.headerText());
        const auto& all = model.columns();
        const auto modelColumn = static_cast<int>(std::ranges::find(all, &column) - all.begin());
        const bool number = column.field() && column.field()->isNumber();
        const int digits = number ? column.field()->fractionDigits() : 0;
        for (int row = 0; row < rows; ++row) {
            const QString shown = model.text(row, modelColumn);
            const QJsonObject written = cell(workbook, row + 1, i);
            if (shown.isEmpty()) {
                EXPECT_TRUE(written.isEmpty()) << row << ' ' << i;
            } else if (written["type"] == "n") {
                QString value = QString::number(written["value"].toDouble(), 'f', digits);
                EXPECT_TRUE(number);
                EXPECT_EQ(value.replace('.', model.decimalPoint()), shown);
                EXPECT_GT(workbook["widths"][i].toDouble(), shown.size()) << "the width counts digits";
                EXPECT_EQ(written["format"].toString(), digits == 0 ? "0" : "0." + QString(digits, '0'));
            } else {
                EXPECT_EQ(written["type"].toString(), "text");
                EXPECT_EQ(written["value"].toString(), shown) << row << ' ' << i;
                EXPECT_TRUE(written["wrap"].toBool());
                EXPECT_EQ(written["format"].toString(), "@");
                EXPECT_TRUE(!number || shown.count(QRegularExpression("[0-9]")) > 15) << shown.toStdString();
            }
            if (!shown.isEmpty()) {
                EXPECT_EQ(written["align"].toString(),
                          column.alignment() & Qt::AlignRight ? "right" : "left");
            }
        }
        const QJsonObject footer = cell(workbook, rows + 1, i);
        EXPECT_EQ(footer.isEmpty(), &column != view.footerColumn());
        EXPECT_TRUE(footer.isEmpty() || (footer["type"] == "n" && footer["value"].toInt() == rows));
    }
}

} // namespace test
