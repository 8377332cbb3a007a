#pragma once

#include "grid/text/collation.h"

#include <QString>

#include <cstdint>
#include <string>
#include <string_view>

namespace db {
class DataSet;
class Field;
} // namespace db

namespace grid {

/// A half-open range of a text's characters.
struct TextRange {
    qsizetype start = 0;
    qsizetype end = 0;
    [[nodiscard]] bool isEmpty() const { return start >= end; }
};

/// Finds a text in the values of a dataset as they are shown, without regard to case; numbers by a point as
/// well as by a comma. Texts are searched in the bytes in which they are held, so that whole columns can be
/// gone through.
class TextMatcher final {
public:
    explicit TextMatcher(const QString& text);

    [[nodiscard]] bool isEmpty() const { return length_ == 0; }
    /// The first occurrence in the shown value; an empty range when there is none.
    [[nodiscard]] TextRange findIn(const db::DataSet& dataSet, int row, const db::Field& field) const;
    /// The same in a text as it is held.
    [[nodiscard]] TextRange findIn(std::string_view text) const;
    /// The same in a number of so many fraction digits.
    [[nodiscard]] TextRange findIn(std::int64_t units, int digits) const;

private:
    [[nodiscard]] TextRange rangeFrom(std::size_t found) const;

    qsizetype length_;
    bool mayBeInText_; // the code page has all its letters
    bool mayBeInNumber_;
    collation::Needle needle_;
    std::string number_; // the text with a point for a comma
};

} // namespace grid
