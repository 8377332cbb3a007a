// SPDX-License-Identifier: MIT

#include "grid/text/number_condition.h"

#include "base/decimal.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

namespace grid {

/// How a number may stand to a bound.
struct NumberRelation {
    QStringView sign;
    QStringView words;
    bool less = false;
    bool equal = false;
    bool greater = false;

    [[nodiscard]] bool allows(std::strong_ordering order) const {
        return std::is_lt(order) ? less : std::is_gt(order) ? greater : equal;
    }
};

namespace {

/// A sign comes before those that it begins with.
constexpr std::array<NumberRelation, 6> relations = {{
    {u"<=", u"не больше", true, true, false},
    {u">=", u"не меньше", false, true, true},
    {u"<>", u"не равно", true, false, true},
    {u"<", u"меньше", true, false, false},
    {u">", u"больше", false, false, true},
    {u"=", u"равно", false, true, false},
}};
constexpr const NumberRelation& notGreater = relations[0];
constexpr const NumberRelation& notLess = relations[1];
constexpr QChar rangeSign = u'~';

constexpr char16_t minusSign = 0x2212; // typographic

bool isSign(QChar character) {
    return QStringView(u"<>=~").contains(character);
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n\xA0";
    const std::size_t start = text.find_first_not_of(blanks);
    return start == std::string_view::npos ? std::string_view()
                                           : text.substr(start, text.find_last_not_of(blanks) + 1 - start);
}

bool areDigits(std::string_view text) {
    return std::ranges::all_of(text, [](char each) { return each >= '0' && each <= '9'; });
}

} // namespace

std::optional<ExactNumber> ExactNumber::read(std::string_view text) {
    text = trimmed(text);
    ExactNumber number;
    number.negative = text.starts_with('-');
    text.remove_prefix(number.negative ? 1 : 0);
    const std::size_t point = std::min(text.find_first_of(".,"), text.size());
    number.whole = text.substr(0, point);
    number.fraction = text.substr(std::min(point + 1, text.size()));
    if ((number.whole.empty() && number.fraction.empty()) || !areDigits(number.whole) ||
        !areDigits(number.fraction)) {
        return std::nullopt;
    }
    number.whole.remove_prefix(std::min(number.whole.find_first_not_of('0'), number.whole.size()));
    number.fraction = number.fraction.substr(0, number.fraction.find_last_not_of('0') + 1);
    const bool isZero = number.whole.empty() && number.fraction.empty();
    number.negative = number.negative && !isZero;
    return number;
}

std::strong_ordering ExactNumber::operator<=>(const ExactNumber& other) const {
    if (negative != other.negative) {
        return other.negative <=> negative;
    }
    const ExactNumber& left = negative ? other : *this;
    const ExactNumber& right = negative ? *this : other;
    if (left.whole.size() != right.whole.size()) {
        return left.whole.size() <=> right.whole.size();
    }
    const auto order = left.whole <=> right.whole;
    return std::is_neq(order) ? order : left.fraction <=> right.fraction;
}

/// Reads conditions from the left to the right; `mistake` says what is wrong and ends it.
class NumberCondition::Reader final {
public:
    explicit Reader(const QString& text) : text_(QString(text).replace(QChar(minusSign), u'-')) {}

    Reading read() {
        NumberCondition condition;
        condition.text_ = text_.trimmed();
        skipBlanks();
        while (mistake_.isEmpty() && place_ < text_.size()) {
            readTerm(condition);
            skipBlanks();
        }
        return mistake_.isEmpty() ? Reading{std::move(condition), {}} : Reading{std::nullopt, mistake_};
    }

private:
    void readTerm(NumberCondition& condition) {
        const auto* const relation = std::ranges::find_if(
            relations, [this](const NumberRelation& each) { return rest().startsWith(each.sign); });
        if (relation != relations.end()) {
            place_ += relation->sign.size();
            readComparison(condition, *relation, relation->sign);
        } else {
            readRange(condition);
        }
    }

    void readRange(NumberCondition& condition) {
        const QString first = readComparison(condition, notLess, {});
        skipBlanks();
        if (!mistake_.isEmpty()) {
            return;
        }
        if (!rest().startsWith(rangeSign)) {
            mistake_ = QStringLiteral("Перед «%1» нужен знак: > >= < <= = <> или ~").arg(first);
            return;
        }
        ++place_;
        const QString last = readComparison(condition, notGreater, QStringView(&rangeSign, 1));
        const auto& ends = condition.comparisons_;
        if (mistake_.isEmpty() && ends.rbegin()->bound() < std::next(ends.rbegin())->bound()) {
            mistake_ = QStringLiteral("«%1» больше, чем «%2»").arg(first, last);
        }
    }

    /// Returns the bound as it was typed.
    QString readComparison(NumberCondition& condition, const NumberRelation& relation,
                           QStringView signBefore) {
        skipBlanks();
        const qsizetype start = place_;
        while (place_ < text_.size() && !isSign(text_[place_]) && !text_[place_].isSpace()) {
            ++place_;
        }
        QString word = text_.sliced(start, place_ - start);
        const std::string characters = word.toStdString();
        const auto number = ExactNumber::read(characters);
        if (number) {
            condition.comparisons_.push_back({&relation, word, number->negative, std::string(number->whole),
                                              std::string(number->fraction)});
        } else if (!word.isEmpty()) {
            mistake_ = QStringLiteral("«%1» — не число").arg(word);
        } else if (signBefore.isEmpty()) {
            mistake_ = QStringLiteral("Перед «%1» нужно число").arg(text_[place_]);
        } else {
            mistake_ = QStringLiteral("После «%1» нужно число").arg(signBefore);
        }
        return word;
    }

    void skipBlanks() {
        while (place_ < text_.size() && text_[place_].isSpace()) {
            ++place_;
        }
    }

    [[nodiscard]] QStringView rest() const { return QStringView(text_).sliced(place_); }

    QString text_;
    qsizetype place_ = 0;
    QString mistake_;
};

bool NumberCondition::isMeantBy(const QString& text) {
    return std::ranges::any_of(text, isSign);
}

NumberCondition::Reading NumberCondition::read(const QString& text) {
    return Reader(text).read();
}

QString NumberCondition::inWords(QChar decimalPoint) const {
    QStringList words;
    for (const Comparison& comparison : comparisons_) {
        QString bound = comparison.boundText;
        bound.replace(u'.', decimalPoint).replace(u',', decimalPoint);
        words.append(comparison.relation->words.toString() + u' ' + bound);
    }
    return words.join(QStringLiteral(" и "));
}

bool NumberCondition::holdsFor(std::string_view text) const {
    const auto number = ExactNumber::read(text);
    return number && std::ranges::all_of(comparisons_, [&](const Comparison& each) {
               return each.relation->allows(*number <=> each.bound());
           });
}

UnitCondition NumberCondition::forDigits(int digits) const {
    // The greater the units, the greater the number: halving finds where it passes a bound, in exact
    // comparisons.
    const auto firstWhere = [digits](auto fulfils) -> UnitCondition::Threshold {
        const auto isPassed = [&](std::int64_t units) {
            const base::DecimalCharacters characters(units, digits);
            return fulfils(*ExactNumber::read(characters.view()));
        };
        std::int64_t first = std::numeric_limits<std::int64_t>::min();
        std::int64_t last = std::numeric_limits<std::int64_t>::max();
        if (!isPassed(last)) {
            return {};
        }
        while (first < last) {
            const std::int64_t middle = std::midpoint(first, last);
            if (isPassed(middle)) {
                last = middle;
            } else {
                first = middle + 1;
            }
        }
        return {true, first};
    };
    UnitCondition condition;
    for (const Comparison& each : comparisons_) {
        const ExactNumber bound = each.bound();
        condition.comparisons_.push_back(
            {each.relation, firstWhere([&](const ExactNumber& number) { return number >= bound; }),
             firstWhere([&](const ExactNumber& number) { return number > bound; })});
    }
    return condition;
}

bool UnitCondition::holdsFor(std::int64_t units) const {
    return std::ranges::all_of(comparisons_, [units](const Comparison& each) {
        return each.greater.isReachedBy(units)   ? each.relation->greater
               : each.notLess.isReachedBy(units) ? each.relation->equal
                                                 : each.relation->less;
    });
}

} // namespace grid
