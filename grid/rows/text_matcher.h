#pragma once

#include "grid/rows/collation.h"

#include <QString>

#include <optional>

namespace db {
class DataSet;
class Field;
} // namespace db

namespace grid {

/// Finds a text in the values of a dataset as they are shown, without regard to case. Texts are searched in
/// the bytes in which they are held, so that whole columns can be gone through.
class TextMatcher final {
public:
    TextMatcher(const QString& text, QChar decimalPoint);

    [[nodiscard]] bool isEmpty() const { return needle_.isEmpty(); }
    /// Characters of the text that is searched for.
    [[nodiscard]] qsizetype length() const { return text_.size(); }
    /// Where the first occurrence begins in the shown value, from 0.
    [[nodiscard]] std::optional<qsizetype> findIn(const db::DataSet& dataSet, int row,
                                                  const db::Field& field) const;

private:
    QString text_;
    QChar decimalPoint_;
    bool mayBeInNumber_;
    collation::Needle needle_;
};

} // namespace grid
