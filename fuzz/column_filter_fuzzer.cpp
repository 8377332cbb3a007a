// SPDX-License-Identifier: MIT

// Search words of any text over values of any bytes.

#include "base/win1251.h"
#include "db/field.h"
#include "fuzz/fuzzing.h"
#include "grid/rows/row_filter.h"

void fuzz::run(Input& input) {
    static const db::Field texts(db::text(u"T", 1000), 0, QString(), nullptr);
    static const db::Field numbers(db::decimal(u"N", 2), 1, QString(), nullptr);
    grid::ColumnFilter filter;
    filter.containedText = takeText(input);
    const auto number = input.ConsumeIntegral<std::int64_t>();
    static_cast<void>(grid::ContentsCheck(filter, numbers).holdsFor(number));

    const std::string value = input.ConsumeRemainingBytesAsString();
    const grid::ContentsCheck contents(filter, texts);
    check(contents.holdsFor(value) || !filter.containedText.isEmpty());
    // A word is found in what begins and ends with it; several words and quotation marks have rules of their
    // own.
    const auto word = base::win1251::tryEncode(filter.containedText);
    if (word && !filter.containedText.contains(u'"') &&
        filter.containedText.simplified() == filter.containedText && !word->contains(' ')) {
        check(contents.holdsFor(word->toStdString() + value) &&
              contents.holdsFor(value + word->toStdString()));
    }
}
