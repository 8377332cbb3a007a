// SPDX-License-Identifier: MIT

#pragma once

#include <QStringView>

#include <algorithm>
#include <array>

namespace data {

/// A catalog edition: its tables, and the words of the command that opens it. An edition is added by a row of
/// `editions`: its command, Action followed by the number, is made of that row.
struct Edition {
    /// What the user reads.
    struct Words {
        QStringView caption;       ///< of the command, and in the browser's banner
        QStringView buttonCaption; ///< "&" marks the Alt accelerator
        QStringView hint;
    };

    struct Tables {
        QStringView materials;
        QStringView contents;
        QStringView machines;
        QStringView labour;
    };

    /// The value of the open-browser marker while this edition is shown, and the end of its command's name.
    int number = 0;
    Words words;
    Tables tables;
};

// The database spells "KATOGLAVLENIE" without the second "A" of "KATALOG".
inline constexpr std::array editions{
    Edition{
        .number = 1,
        .words = {u"ТЕР", u"ТЕР", u"Тип ТЕР"},
        .tables = {u"TERKATALOGKTC_TABLE", u"TERKATOGLAVLENIE_TABLE", u"TERMASH_TABLE", u"TERTRUD_TABLE"},
    },
    Edition{
        .number = 4,
        .words = {u"ФЕР2014И2", u"ФЕР20&14И2", u"Тип ФЕР2014И2"},
        .tables = {u"FER14I2KATALOGKTC_TABLE", u"FER14I2KATOGLAVLENIE_TABLE", u"FER14I2MASH_TABLE",
                   u"FER14I2TRUD_TABLE"},
    },
    Edition{
        .number = 7,
        .words = {u"ФЕР2017И5", u"ФЕР2017И&5", u"Тип ФЕР2017И5"},
        .tables = {u"FER17I5KATALOGKTC_TABLE", u"FER17I5KATOGLAVLENIE_TABLE", u"FER17I5MASH_TABLE",
                   u"FER17I5TRUD_TABLE"},
    },
    Edition{
        .number = 8,
        .words = {u"ФЕР2020", u"ФЕР&2020", u"Тип ФЕР2020"},
        .tables = {u"FER20KATALOGKTC_TABLE", u"FER20KATOGLAVLENIE_TABLE", u"FER20MASH_TABLE",
                   u"FER20TRUD_TABLE"},
    },
};

/// The edition of that number, which must exist.
[[nodiscard]] constexpr const Edition& editionOf(int number) {
    return *std::ranges::find(editions, number, &Edition::number);
}

/// The edition whose tables the datasets read until one is chosen.
inline constexpr const Edition& initialEdition = editions[0];

} // namespace data
