// SPDX-License-Identifier: MIT

// The order of any three texts, which must be one, and the search for one in another.

#include "fuzz/fuzzing.h"
#include "grid/text/collation.h"

#include <compare>

namespace {

using fuzz::check;
using Bytes = std::vector<std::uint8_t>;
namespace collation = grid::collation;

int order(const std::string& left, const std::string& right) {
    const int difference = collation::compare(left, right);
    return (difference > 0) - (difference < 0);
}

Bytes orderBytes(std::string_view text) {
    Bytes bytes;
    collation::appendOrderBytes(text, bytes);
    return bytes;
}

void checkPair(const std::string& left, const std::string& right) {
    check(order(left, left) == 0 && order(left, right) == -order(right, left));
    const Bytes one = orderBytes(left);
    const Bytes other = orderBytes(right);
    check(one == other || (one < other) == (order(left, right) < 0));
}

bool isFoundAt(const std::string& text, std::size_t place, const std::string& sought) {
    for (std::size_t index = 0; index < sought.size(); ++index) {
        const char one = text[place + index];
        if (orderBytes({&one, 1}) != orderBytes({&sought[index], 1})) {
            return false;
        }
    }
    return true;
}

void checkSearch(const std::string& text, const std::string& sought) {
    std::size_t expected = 0;
    while (expected + sought.size() <= text.size() && !isFoundAt(text, expected, sought)) {
        ++expected;
    }
    const collation::Needle needle(sought);
    check(needle.findIn(text) == (expected + sought.size() <= text.size() ? expected : text.npos));
    check(needle.isStartOf(text) == (expected == 0 && sought.size() <= text.size()));
}

} // namespace

void fuzz::run(Input& input) {
    const std::string one = input.ConsumeRandomLengthString();
    const std::string two = input.ConsumeRandomLengthString();
    const std::string three = input.ConsumeRandomLengthString();
    checkPair(one, two);
    checkPair(two, three);
    checkPair(one, three);
    if (order(one, two) <= 0 && order(two, three) <= 0) {
        check(order(one, three) <= 0);
        check(order(one, three) < 0 || (order(one, two) == 0 && order(two, three) == 0));
    }
    checkSearch(one, two);
}
