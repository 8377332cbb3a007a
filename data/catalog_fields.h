#pragma once

#include "db/field.h"

#include <array>

/// The declared fields of the ten catalog datasets, in the order of their queries' columns. Kinds follow the
/// tables of the catalog database. The identifiers of the edition catalogs are declared as decimals without
/// fraction digits, those of the other tables as 64-bit integers.
namespace data::fields {

using db::FieldSpec;
using enum db::FieldKind;

inline constexpr bool hidden = false;
inline constexpr bool shown = true;
inline constexpr bool left = true;

inline constexpr std::array regions{
    FieldSpec{u"ID", Integer64, 0, u"", hidden},
    FieldSpec{u"NAME", String, 255, u"Регион"},
};

inline constexpr std::array periods{
    FieldSpec{u"PERIOD", String, 6},
};

inline constexpr std::array materials{
    FieldSpec{u"ID", Decimal, 0, u"", hidden},         FieldSpec{u"PER", String, 6, u"", hidden},
    FieldSpec{u"REGIONID", Decimal, 0, u"", hidden},   FieldSpec{u"KOD", Integer32, 0, u"Код", shown, left},
    FieldSpec{u"NOMER", String, 50, u"Номер"},         FieldSpec{u"NAME", String, 1000, u"Наименование"},
    FieldSpec{u"EDIZM", String, 30, u"Ед.изм"},        FieldSpec{u"BRUTTO", String, 30, u"Брутто"},
    FieldSpec{u"KLASSGR", String, 30, u"Класс груза"}, FieldSpec{u"KODUZLA", String, 30, u"Код узла"},
    FieldSpec{u"BAZOVAY", Decimal, 2, u"Базовая"},     FieldSpec{u"OPTOVAY", Decimal, 2, u"Оптовая"},
    FieldSpec{u"CMETNAY", Decimal, 2, u"Сметная"},     FieldSpec{u"INDEKS", Decimal, 2, u"Индекс"},
};

inline constexpr std::array contents{
    FieldSpec{u"ID", Decimal, 0, u"", hidden},
    FieldSpec{u"PER", String, 6, u"", hidden},
    FieldSpec{u"REGIONID", Decimal, 0, u"", hidden},
    FieldSpec{u"KOD", Integer32, 0, u"Код", shown, left},
    FieldSpec{u"PUNKT", String, 255, u"Пункт оглавления"},
    FieldSpec{u"KODUZLA", String, 30, u"Код узла"},
};

inline constexpr std::array machines{
    FieldSpec{u"ID", Decimal, 0, u"", hidden},
    FieldSpec{u"PER", String, 6, u"", hidden},
    FieldSpec{u"REGIONID", Decimal, 0, u"", hidden},
    FieldSpec{u"KOD", Integer32, 0, u"Код", shown, left},
    FieldSpec{u"OBOSNOV", String, 50, u"Обоснование"},
    FieldSpec{u"NAME", String, 1000, u"Наименование"},
    FieldSpec{u"EDIZM", String, 30, u"Ед.изм"},
    FieldSpec{u"EMM", Decimal, 2, u"ЭММ"},
    FieldSpec{u"ZMP", Decimal, 2, u"ЗПМ"},
};

inline constexpr std::array labour{
    FieldSpec{u"ID", Decimal, 0, u"", hidden},         FieldSpec{u"PER", String, 6, u"", hidden},
    FieldSpec{u"REGIONID", Decimal, 0, u"", hidden},   FieldSpec{u"KOD", Integer32, 0, u"Код", shown, left},
    FieldSpec{u"OBOSNOV", String, 50, u"Обоснование"}, FieldSpec{u"NAME", String, 1000, u"Наименование"},
    FieldSpec{u"EDIZM", String, 30, u"Ед.изм"},        FieldSpec{u"OZP", Decimal, 2, u"ОЗП"},
};

inline constexpr std::array firms{
    FieldSpec{u"INN", String, 30, u"ИНН"},
    FieldSpec{u"FULLNAME", String, 1000, u"Наименование"},
    FieldSpec{u"URADDRESS", String, 1000, u"Адрес"},
    FieldSpec{u"WEBSITE", String, 1000, u"ВЕБсайт"},
};

inline constexpr std::array coefficients{
    FieldSpec{u"NAME", String, 255, u"Регион"},
    FieldSpec{u"KOEFF", Decimal, 4, u"Коэффициент"},
};

inline constexpr std::array catalogTree{
    FieldSpec{u"ID", Integer64, 0, u"", hidden},
    FieldSpec{u"PARENTID", Integer64, 0, u"", hidden},
    FieldSpec{u"NAME", String, 1000, u"Наименование"},
    FieldSpec{u"TREE", String, 30, u"Узел"},
};

inline constexpr std::array transport{
    FieldSpec{u"ID", Integer64, 0, u"", hidden},
    FieldSpec{u"PER", String, 6, u"", hidden},
    FieldSpec{u"REGIONID", Integer64, 0, u"", hidden},
    FieldSpec{u"KOD", Integer32, 0, u"Код", shown, left},
    FieldSpec{u"OBOSNOV", String, 50, u"Обоснование"},
    FieldSpec{u"NAME", String, 1000, u"Наименование"},
    FieldSpec{u"KLASSGR", String, 30, u"Класс"},
    FieldSpec{u"CMETNAY", Decimal, 2, u"Сметная цена 2001"},
    FieldSpec{u"TECCENA", Decimal, 2, u"Текущая цена"},
};

} // namespace data::fields
