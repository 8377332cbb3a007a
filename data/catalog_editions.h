#pragma once

#include <array>
#include <string_view>

namespace data {

/// How many datasets read tables of the chosen edition: materials, contents, machines, labour.
inline constexpr std::size_t editionDataSetCount = 4;

/// A catalog edition and its tables, in the order of TDM::editionDataSets().
struct Edition {
    int number = 0; ///< the value of the open-browser marker while this edition is shown
    std::array<std::u16string_view, editionDataSetCount> tables;
};

// The database spells "KATOGLAVLENIE" without the second "A" of "KATALOG".
inline constexpr std::array<Edition, 4> editions{{
    {1, {u"TERKATALOGKTC_TABLE", u"TERKATOGLAVLENIE_TABLE", u"TERMASH_TABLE", u"TERTRUD_TABLE"}},
    {4,
     {u"FER14I2KATALOGKTC_TABLE", u"FER14I2KATOGLAVLENIE_TABLE", u"FER14I2MASH_TABLE", u"FER14I2TRUD_TABLE"}},
    {7,
     {u"FER17I5KATALOGKTC_TABLE", u"FER17I5KATOGLAVLENIE_TABLE", u"FER17I5MASH_TABLE", u"FER17I5TRUD_TABLE"}},
    {8, {u"FER20KATALOGKTC_TABLE", u"FER20KATOGLAVLENIE_TABLE", u"FER20MASH_TABLE", u"FER20TRUD_TABLE"}},
}};

} // namespace data
