// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonObject>
#include <QString>

namespace grid {
class TableView;
}

namespace test {

/// A workbook as a reader of its own sees it, see read_workbook.py.
[[nodiscard]] QJsonObject readWorkbook(const QString& path);

/// A cell of such a workbook; empty where nothing stands.
[[nodiscard]] QJsonObject cell(const QJsonObject& workbook, int row, int column);

/// Expects every cell of the workbook to hold what the grid shows.
void expectShown(const QJsonObject& workbook, const grid::TableView& view);

} // namespace test
