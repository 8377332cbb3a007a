#pragma once

#include <QMimeData>

#include <vector>

namespace grid {

/// Rows on the clipboard, as they were when they were copied: plain text with tabs between the cells, and a
/// table in HTML that tells spreadsheets which cells are texts, so that no code becomes a date and no text a
/// formula. Both are only made when somebody pastes.
class CopiedRows final : public QMimeData {
    Q_OBJECT

public:
    /// What a column holds.
    struct Column {
        bool isNumber = false;
        int fractionDigits = 0;
    };

    explicit CopiedRows(std::vector<Column> columns) : columns_(std::move(columns)) {}

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
    QString cells_; ///< one after the other
    std::vector<qsizetype> ends_;
};

} // namespace grid
