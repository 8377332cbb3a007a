// SPDX-License-Identifier: MIT

#include "grid/text/text_matcher.h"

#include "base/decimal.h"
#include "base/win1251.h"

#include <QStringList>

#include <algorithm>

namespace grid {

namespace {

constexpr QChar quotationMark = u'"';

bool endsWord(const QString& text, qsizetype place) {
    return place >= text.size() || text[place].isSpace();
}

/// Where the word that begins at `start` ends, its closing quotation mark left out.
qsizetype endOfWord(const QString& text, qsizetype start, bool isQuoted) {
    qsizetype end = start;
    while (end < text.size()) {
        const bool isEnd =
            isQuoted ? text[end] == quotationMark && endsWord(text, end + 1) : text[end].isSpace();
        if (isEnd) {
            break;
        }
        ++end;
    }
    return end;
}

QStringList wordsOf(const QString& text) {
    QStringList words;
    for (qsizetype place = 0; place < text.size();) {
        if (text[place].isSpace()) {
            ++place;
            continue;
        }
        const bool isQuoted = text[place] == quotationMark;
        const qsizetype start = isQuoted ? place + 1 : place;
        const qsizetype end = endOfWord(text, start, isQuoted);
        if (end > start) {
            words.append(text.mid(start, end - start));
        }
        place = end + (isQuoted ? 1 : 0);
    }
    return words;
}

void mergeOverlapping(std::vector<TextRange>& ranges) {
    std::ranges::sort(ranges, {}, &TextRange::start);
    std::size_t last = 0;
    for (std::size_t index = 1; index < ranges.size(); ++index) {
        if (ranges[index].start <= ranges[last].end) {
            ranges[last].end = std::max(ranges[last].end, ranges[index].end);
        } else {
            ranges[++last] = ranges[index];
        }
    }
    ranges.resize(ranges.empty() ? 0 : last + 1);
}

/// Every occurrence, where `find` tells the first one in a text.
template <typename Find>
void appendOccurrences(std::vector<TextRange>& ranges, std::string_view text, std::size_t length,
                       const Find& find) {
    std::size_t searched = 0;
    for (std::size_t found = find(text); found != std::string_view::npos;
         found = find(text.substr(searched))) {
        const std::size_t start = searched + found;
        searched = start + length;
        ranges.push_back({static_cast<qsizetype>(start), static_cast<qsizetype>(searched)});
    }
}

} // namespace

TextMatcher::Word::Word(const QString& text)
    : mayBeInText_(base::win1251::tryEncode(text).has_value()),
      mayBeInNumber_(std::ranges::all_of(
          text, [](QChar each) { return each.isDigit() || each == u'.' || each == u',' || each == u'-'; })),
      needle_(base::win1251::encode(text).toStdString()),
      number_(QString(text).replace(u',', u'.').toLatin1().toStdString()) {}

std::size_t TextMatcher::Word::findInText(std::string_view text) const {
    return mayBeInText_ ? needle_.findIn(text) : std::string_view::npos;
}

std::size_t TextMatcher::Word::findInNumber(std::string_view characters) const {
    if (!mayBeInNumber_) {
        return std::string_view::npos;
    }
    // So few characters are not worth the library's preparations.
    const auto found = std::ranges::search(characters, number_);
    return found.empty() ? std::string_view::npos
                         : static_cast<std::size_t>(found.begin() - characters.begin());
}

TextMatcher::TextMatcher(const QString& text) {
    for (const QString& word : wordsOf(text)) {
        words_.emplace_back(word);
    }
    std::ranges::stable_sort(words_, std::ranges::greater(), &Word::length);
    mayMatchNumbers_ = std::ranges::all_of(words_, &Word::mayBeInNumber);
}

bool TextMatcher::matches(const CellView& value, int fractionDigits) const {
    if (const auto* const text = std::get_if<std::string_view>(&value)) {
        return std::ranges::all_of(
            words_, [&](const Word& word) { return word.findInText(*text) != std::string_view::npos; });
    }
    if (const auto* const number = std::get_if<std::int64_t>(&value); number && mayMatchNumbers_) {
        const base::DecimalCharacters characters(*number, fractionDigits);
        return std::ranges::all_of(words_, [&](const Word& word) {
            return word.findInNumber(characters.view()) != std::string_view::npos;
        });
    }
    return isEmpty();
}

std::vector<TextRange> TextMatcher::marksIn(const CellView& value, int fractionDigits) const {
    std::vector<TextRange> ranges;
    if (!matches(value, fractionDigits)) {
        return ranges;
    }
    for (const Word& word : words_) {
        if (const auto* const text = std::get_if<std::string_view>(&value)) {
            appendOccurrences(ranges, *text, word.length(),
                              [&](std::string_view rest) { return word.findInText(rest); });
        } else if (const auto* const number = std::get_if<std::int64_t>(&value)) {
            appendOccurrences(ranges, base::DecimalCharacters(*number, fractionDigits).view(), word.length(),
                              [&](std::string_view rest) { return word.findInNumber(rest); });
        }
    }
    mergeOverlapping(ranges);
    return ranges;
}

} // namespace grid
