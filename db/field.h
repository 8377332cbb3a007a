// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>

#include <cstdint>

namespace db {

/// What a column must deliver and how its values are held.
enum class FieldKind : std::uint8_t {
    Integer64, ///< BIGINT
    Integer32, ///< INTEGER
    Decimal,   ///< an exact number with a fixed count of fraction digits
    String,    ///< text in the connection's character set
};

/// One row of the field table of a dataset: made by text(), integer(), bigint() or decimal(), refined by the
/// functions that return a changed copy. How a view shows the field is said here too, so that a further field
/// is one row.
struct FieldSpec {
    QStringView column; ///< column name in the query's result
    FieldKind kind;
    int length = 0;         ///< of a text: greatest length in characters
    int fractionDigits = 0; ///< of a decimal
    QStringView label;      ///< header text; empty means the column name
    bool visible = true;
    bool leftAligned = false; ///< a number that is shown at the left
    bool isRatio = false;     ///< a decimal whose sum would say nothing
    int columnWidth = 0;      ///< design width of the field's column in pixels; 0 is the view's default

    /// The same with another part.
    template <typename Value>
    [[nodiscard]] constexpr FieldSpec with(Value FieldSpec::*part, Value value) const {
        FieldSpec changed = *this;
        changed.*part = value;
        return changed;
    }
    /// Read, but not shown.
    [[nodiscard]] constexpr FieldSpec hidden() const { return with(&FieldSpec::visible, false); }
    /// A number at the left.
    [[nodiscard]] constexpr FieldSpec left() const { return with(&FieldSpec::leftAligned, true); }
    /// A factor or an index, not an amount.
    [[nodiscard]] constexpr FieldSpec ratio() const { return with(&FieldSpec::isRatio, true); }
    /// In a column of that design width.
    [[nodiscard]] constexpr FieldSpec wide(int width) const { return with(&FieldSpec::columnWidth, width); }

    [[nodiscard]] constexpr bool isNumber() const { return kind != FieldKind::String; }
    /// Numbers stand at the right unless they are marked, texts at the left.
    [[nodiscard]] constexpr Qt::AlignmentFlag alignment() const {
        return isNumber() && !leftAligned ? Qt::AlignRight : Qt::AlignLeft;
    }
};

/// VARCHAR(length).
[[nodiscard]] constexpr FieldSpec text(QStringView column, int length, QStringView label = {}) {
    return {.column = column, .kind = FieldKind::String, .length = length, .label = label};
}

/// INTEGER.
[[nodiscard]] constexpr FieldSpec integer(QStringView column, QStringView label = {}) {
    return {.column = column, .kind = FieldKind::Integer32, .label = label};
}

/// BIGINT.
[[nodiscard]] constexpr FieldSpec bigint(QStringView column, QStringView label = {}) {
    return {.column = column, .kind = FieldKind::Integer64, .label = label};
}

/// NUMERIC(18, fractionDigits).
[[nodiscard]] constexpr FieldSpec decimal(QStringView column, int fractionDigits, QStringView label = {}) {
    return {.column = column, .kind = FieldKind::Decimal, .fractionDigits = fractionDigits, .label = label};
}

/// A field of a dataset, named after the dataset and its column (such as pFIBDataSet3ID).
class Field final : public QObject {
    Q_OBJECT

public:
    Field(const FieldSpec& spec, int index, const QString& name, QObject* parent);

    /// Position in the dataset's field list, from 0.
    [[nodiscard]] int index() const { return index_; }
    [[nodiscard]] const QString& column() const { return column_; }
    [[nodiscard]] FieldKind kind() const { return spec_.kind; }
    /// Greatest length of a text, in characters.
    [[nodiscard]] int length() const { return spec_.length; }
    /// The label, or the column name of a field without one.
    [[nodiscard]] const QString& displayLabel() const { return displayLabel_; }
    [[nodiscard]] bool isNumber() const { return spec_.isNumber(); }
    /// Fraction digits of a number; 0 for integers.
    [[nodiscard]] int fractionDigits() const { return spec_.fractionDigits; }
    /// Whether values are amounts, of which a sum can be made.
    [[nodiscard]] bool isAmount() const { return spec_.fractionDigits > 0 && !spec_.isRatio; }
    /// Where values stand in their cell.
    [[nodiscard]] Qt::Alignment alignment() const { return spec_.alignment() | Qt::AlignVCenter; }

private:
    FieldSpec spec_;
    int index_;
    QString column_;
    QString displayLabel_;
};

} // namespace db
