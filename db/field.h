#pragma once

#include <QObject>
#include <QString>

#include <cstdint>
#include <string_view>

namespace db {

/// What a column must deliver and how its values are held.
enum class FieldKind : std::uint8_t {
    Integer64, ///< BIGINT
    Integer32, ///< INTEGER
    Decimal,   ///< an exact number with a fixed count of fraction digits
    String,    ///< text in the connection's character set
};

/// One row of the field table of a dataset.
struct FieldSpec {
    std::u16string_view column; ///< column name in the query's result
    FieldKind kind;
    int size = 0;                   ///< String: greatest length in characters; Decimal: fraction digits
    std::u16string_view label = {}; ///< header text; empty means the column name
    bool visible = true;
    bool leftAligned = false; ///< a number that is shown at the left
};

/// A field of a dataset, named after the dataset and its column (such as pFIBDataSet3ID).
class Field final : public QObject {
    Q_OBJECT

public:
    Field(const FieldSpec& spec, int index, const QString& name, QObject* parent);

    /// Position in the dataset's field list, from 0.
    [[nodiscard]] int index() const { return index_; }
    [[nodiscard]] const QString& column() const { return column_; }
    [[nodiscard]] FieldKind kind() const { return spec_.kind; }
    [[nodiscard]] int size() const { return spec_.size; }
    /// The label, or the column name of a field without one.
    [[nodiscard]] const QString& displayLabel() const { return displayLabel_; }
    [[nodiscard]] bool isVisible() const { return spec_.visible; }
    [[nodiscard]] bool isNumber() const { return spec_.kind != FieldKind::String; }
    /// Fraction digits of a number; 0 for integers.
    [[nodiscard]] int fractionDigits() const { return spec_.kind == FieldKind::Decimal ? spec_.size : 0; }
    /// Numbers stand at the right unless they are marked, texts at the left.
    [[nodiscard]] Qt::Alignment alignment() const;

private:
    FieldSpec spec_;
    int index_;
    QString column_;
    QString displayLabel_;
};

} // namespace db
