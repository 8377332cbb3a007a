// SPDX-License-Identifier: MIT

#include "random/reference.h"

#include "base/decimal.h"
#include "base/win1251.h"

#include <QRegularExpression>

#include <algorithm>
#include <limits>
#include <set>

namespace reference {

namespace {

const QString alphabet =
    QStringLiteral("0123456789abcdefghijklmnopqrstuvwxyzабвгґѓдђеєжзѕиіїйјкќлљмнњопрстћуўфхцчџшщъыьэюя");

QString folded(const QString& text) {
    return text.toLower().replace(u'ё', u'е');
}

/// What is no letter and no digit comes before all of them.
std::int64_t placeOf(QChar character) {
    const qsizetype place = alphabet.indexOf(character);
    return place < 0    ? static_cast<unsigned char>(base::win1251::encode(QString(character)).front())
           : place < 10 ? 1000 + place
                        : 3000 + place;
}

/// A longer number is greater, but for the digits behind a comma.
std::vector<std::int64_t> lettersOf(const QString& text) {
    static const QRegularExpression parts(QStringLiteral("(?<=\\d,)\\d+|0*(\\d+)|."),
                                          QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression negative(QStringLiteral("\\A-\\d+(,\\d+)?\\z"));
    std::vector<std::int64_t> letters;
    for (auto part = parts.globalMatch(text); part.hasNext();) {
        const QRegularExpressionMatch match = part.next();
        if (match.hasCaptured(1)) {
            letters.push_back(1000 + match.capturedLength(1));
        }
        for (const QChar character : match.captured(match.hasCaptured(1) ? 1 : 0)) {
            letters.push_back(placeOf(character));
        }
    }
    if (negative.match(text).hasMatch()) {
        std::transform(letters.begin() + 1, letters.end(), letters.begin() + 1,
                       [](std::int64_t letter) { return letter >= 1000 ? -letter : letter; });
        letters.push_back(std::numeric_limits<std::int64_t>::max());
    }
    return letters;
}

/// In units that all numbers of these tests are whole ones of; nothing where the text is no number.
std::optional<base::WideInteger> valueOf(const QString& text) {
    constexpr int digits = 18;
    static const QRegularExpression number(
        QStringLiteral("\\A[ \\t\\r\\n\\xA0]*(-?)(?=[.,]?\\d)(\\d*)(?:[.,](\\d*))?[ \\t\\r\\n\\xA0]*\\z"));
    const QRegularExpressionMatch match = number.match(text);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    base::WideInteger value = 0;
    for (const QChar digit : match.captured(2) + match.captured(3).leftJustified(digits, u'0')) {
        value = 10 * value + digit.digitValue();
    }
    return match.captured(1).isEmpty() ? value : -value;
}

} // namespace

Place::Place(const Cell& cell) : isHeld(!cell.isNull), length(0) {
    if (cell.isNumber) {
        letters.push_back(QString(cell.text).remove(u',').toLongLong());
        return;
    }
    letters = lettersOf(folded(cell.text));
    length = cell.text.size();
    std::ranges::transform(cell.text, std::back_inserter(dots),
                           [](QChar letter) { return letter.toLower() == u'ё'; });
}

bool holdsWords(const Cell& cell, const QStringList& words) {
    static const QRegularExpression numberWord(QStringLiteral("\\A[\\d.,-]+\\z"));
    return std::ranges::all_of(words, [&](const QString& word) {
        return !cell.isNumber ? folded(cell.text).contains(folded(word))
                              : numberWord.match(word).hasMatch() &&
                                    cell.text.contains(QString(word).replace(u'.', u','));
    });
}

bool holdsComparisons(const Cell& cell, const std::vector<Comparison>& comparisons) {
    const auto value = valueOf(cell.text);
    return std::ranges::all_of(comparisons, [&](const Comparison& each) {
        const auto bound = *valueOf(each.bound);
        return value && ((*value < bound && each.sign.contains(u'<')) ||
                         (*value > bound && each.sign.contains(u'>')) ||
                         (*value == bound && each.sign.contains(u'=')));
    });
}

std::vector<int> parentsOf(const std::vector<Key>& keys) {
    constexpr int top = -1;
    std::vector<int> parents(keys.size(), top);
    for (std::size_t row = 0; row < keys.size(); ++row) {
        const auto parent =
            std::ranges::find_if(keys, [&](const Key& key) { return key.id && key.id == keys[row].parent; });
        parents[row] = parent == keys.end() ? top : static_cast<int>(parent - keys.begin());
    }
    // Of a circle the first row stands at the top.
    for (int row = 0; row < static_cast<int>(keys.size()); ++row) {
        std::set<int> ancestors;
        int ancestor = parents[static_cast<std::size_t>(row)];
        while (ancestor != top && ancestors.insert(ancestor).second) {
            ancestor = parents[static_cast<std::size_t>(ancestor)];
        }
        if (ancestors.contains(row)) {
            parents[static_cast<std::size_t>(row)] = top;
        }
    }
    return parents;
}

} // namespace reference
