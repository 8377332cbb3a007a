// SPDX-License-Identifier: MIT

#pragma once

#include <QMimeData>
#include <QStringList>

#include <vector>

namespace grid {

/// Rows, or a single cell, on the clipboard, as they were when they were copied: plain text with tabs between
/// the cells, and a table in HTML that tells spreadsheets which cells are texts, so that no code becomes a
/// date and no text a formula. Both are only made when somebody pastes.
class CopiedRows final : public QMimeData {
    Q_OBJECT

public:
    /// What a column holds.
    struct Column {
        bool isNumber = false;
        int fractionDigits = 0;
    };

    /// Rows of these columns; `headings` stand above them, one a column, or none at all.
    CopiedRows(std::vector<Column> columns, QStringList headings)
        : columns_(std::move(columns)), headings_(std::move(headings)) {}
    /// A cell, whose plain text is the very text that is shown.
    CopiedRows(Column column, const QString& text) : columns_{column}, isCell_(true) { add(text); }

    /// Appends the next cell of a row, as it is shown; rows are filled from left to right.
    void add(const QString& cell);

    [[nodiscard]] QStringList formats() const override;

protected:
    [[nodiscard]] QVariant retrieveData(const QString& format, QMetaType type) const override;

private:
    [[nodiscard]] QStringView cell(std::size_t index) const;
    [[nodiscard]] QString plainText() const;
    [[nodiscard]] QByteArray html() const;

    std::vector<Column> columns_;
    QStringList headings_;
    bool isCell_ = false;
    QString cells_; ///< one after the other
    std::vector<qsizetype> ends_;
};

} // namespace grid
