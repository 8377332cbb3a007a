// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>

#include <span>
#include <vector>

namespace db {
class DataSet;
class Field;
} // namespace db

namespace grid {

/// Design width of a column that sets none, in pixels.
inline constexpr int defaultColumnWidth = 64;

/// One row of the column table of a grid or a tree list.
struct ColumnSpec {
    QStringView name = {}; ///< object name of the column; empty: the view's, followed by the field
    QStringView field;     ///< column name of the dataset's field
    bool visible = true;
    int width = 0; ///< design width in pixels, relative to the other columns; 0 means defaultColumnWidth
    Qt::AlignmentFlag headerAlignment = Qt::AlignLeft;
};

/// A column of a view, child of the view.
class Column final : public QObject {
    Q_OBJECT

public:
    /// Binds to the field of `dataSet` that the spec names.
    Column(const ColumnSpec& spec, const db::DataSet& dataSet, QObject* view);

    /// Null when the dataset has no such field; the cells are empty then.
    [[nodiscard]] const db::Field* field() const { return field_; }
    /// The field's display label, or the field name.
    [[nodiscard]] const QString& headerText() const { return headerText_; }
    [[nodiscard]] Qt::Alignment headerAlignment() const { return spec_.headerAlignment; }
    /// Alignment of the values.
    [[nodiscard]] Qt::Alignment alignment() const;
    /// Whether the view shows the column.
    [[nodiscard]] bool isVisible() const { return spec_.visible && !hiddenByUser_; }
    /// Whether the user has hidden a column that the view shows by design.
    [[nodiscard]] bool isHiddenByUser() const { return hiddenByUser_; }
    void setHiddenByUser(bool hidden) { hiddenByUser_ = hidden; }
    /// Width in pixels by design, which counts in relation to the other columns'.
    [[nodiscard]] int designWidth() const { return spec_.width > 0 ? spec_.width : defaultColumnWidth; }

    /// Present width in pixels; the design width until the view has been laid out.
    [[nodiscard]] int width() const { return width_; }
    void setWidth(int width) { width_ = width; }

private:
    ColumnSpec spec_;
    const db::Field* field_;
    QString headerText_;
    int width_;
    bool hiddenByUser_ = false;
};

/// The columns of a view, its children, in the order of their specs.
[[nodiscard]] std::vector<Column*> makeColumns(std::span<const ColumnSpec> specs, const db::DataSet& dataSet,
                                               QObject* view);

} // namespace grid
