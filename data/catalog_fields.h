// SPDX-License-Identifier: MIT

#pragma once

#include "db/field.h"

#include <array>

/// The declared fields of the ten catalog datasets, in the order of their queries' columns. Kinds follow the
/// tables of the catalog database. The identifiers of the edition catalogs are declared as decimals without
/// fraction digits, those of the other tables as 64-bit integers.
///
/// The columns of the browser's grids are derived from these lines, hence the design widths, in pixels at 96
/// per inch: a further column is a further line here.
namespace data::fields {

using db::bigint;
using db::decimal;
using db::integer;
using db::text;

inline constexpr std::array regions{
    bigint(u"ID").hidden(),
    text(u"NAME", 255, u"Регион"),
};

inline constexpr std::array periods{
    text(u"PERIOD", 6),
};

inline constexpr std::array materials{
    decimal(u"ID", 0).hidden(),
    text(u"PER", 6).hidden(),
    decimal(u"REGIONID", 0).hidden(),
    integer(u"KOD", u"Код").left().wide(64),
    text(u"NOMER", 50, u"Номер").wide(90),
    text(u"NAME", 1000, u"Наименование").wide(308),
    text(u"EDIZM", 30, u"Ед.изм").wide(104),
    text(u"BRUTTO", 30, u"Брутто").wide(105),
    text(u"KLASSGR", 30, u"Класс груза").wide(104),
    text(u"KODUZLA", 30, u"Код узла").wide(101),
    decimal(u"BAZOVAY", 2, u"Базовая").wide(82),
    decimal(u"OPTOVAY", 2, u"Оптовая").wide(81),
    decimal(u"CMETNAY", 2, u"Сметная").wide(82),
    decimal(u"INDEKS", 2, u"Индекс").ratio().wide(81),
};

inline constexpr std::array contents{
    decimal(u"ID", 0).hidden(),
    text(u"PER", 6).hidden(),
    decimal(u"REGIONID", 0).hidden(),
    integer(u"KOD", u"Код").left().wide(110),
    text(u"PUNKT", 255, u"Пункт оглавления").wide(785),
    text(u"KODUZLA", 30, u"Код узла").wide(307),
};

inline constexpr std::array machines{
    decimal(u"ID", 0).hidden(),
    text(u"PER", 6).hidden(),
    decimal(u"REGIONID", 0).hidden(),
    integer(u"KOD", u"Код").left().wide(145),
    text(u"OBOSNOV", 50, u"Обоснование").wide(217),
    text(u"NAME", 1000, u"Наименование").wide(294),
    text(u"EDIZM", 30, u"Ед.изм").wide(93),
    decimal(u"EMM", 2, u"ЭММ").wide(111),
    decimal(u"ZMP", 2, u"ЗПМ").wide(342),
};

inline constexpr std::array labour{
    decimal(u"ID", 0).hidden(),
    text(u"PER", 6).hidden(),
    decimal(u"REGIONID", 0).hidden(),
    integer(u"KOD", u"Код").left().wide(261),
    text(u"OBOSNOV", 50, u"Обоснование").wide(199),
    text(u"NAME", 1000, u"Наименование").wide(375),
    text(u"EDIZM", 30, u"Ед.изм").wide(217),
    decimal(u"OZP", 2, u"ОЗП").wide(150),
};

inline constexpr std::array firms{
    text(u"INN", 30, u"ИНН").wide(92),
    text(u"FULLNAME", 1000, u"Наименование").wide(370),
    text(u"URADDRESS", 1000, u"Адрес").wide(370),
    text(u"WEBSITE", 1000, u"ВЕБсайт").wide(370),
};

inline constexpr std::array coefficients{
    text(u"NAME", 255, u"Регион").wide(300),
    decimal(u"KOEFF", 4, u"Коэффициент").ratio().wide(100),
};

inline constexpr std::array catalogTree{
    bigint(u"ID").hidden().wide(100),
    bigint(u"PARENTID").hidden().wide(100),
    text(u"NAME", 1000, u"Наименование").wide(100),
    text(u"TREE", 30, u"Узел").wide(100),
};

inline constexpr std::array transport{
    bigint(u"ID").hidden(),
    text(u"PER", 6).hidden(),
    bigint(u"REGIONID").hidden(),
    integer(u"KOD", u"Код").left().wide(196),
    text(u"OBOSNOV", 50, u"Обоснование").wide(294),
    text(u"NAME", 1000, u"Наименование").wide(351),
    text(u"KLASSGR", 30, u"Класс").wide(152),
    decimal(u"CMETNAY", 2, u"Сметная цена 2001").wide(104),
    decimal(u"TECCENA", 2, u"Текущая цена").wide(105),
};

} // namespace data::fields
