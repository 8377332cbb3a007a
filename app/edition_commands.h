#pragma once

#include "data/catalog_editions.h"

#include <array>
#include <string_view>

namespace app {

/// A command of the edition tool bar. The browser's banner shows the caption of the command that opened it.
struct CommandSpec {
    const char* name;                   ///< of the command
    std::u16string_view caption;        ///< of the command
    std::u16string_view toolBarCaption; ///< of its button; "&" marks the Alt accelerator
    std::u16string_view hint;
    const data::Edition* edition = nullptr; ///< the edition that it opens; none closes the browser
};

inline constexpr std::array<CommandSpec, 5> commands{{
    {"Action1", u"ТЕР", u"ТЕР", u"Тип ТЕР", &data::editions[0]},
    {"Action4", u"ФЕР2014И2", u"ФЕР20&14И2", u"Тип ФЕР2014И2", &data::editions[1]},
    {"Action7", u"ФЕР2017И5", u"ФЕР2017И&5", u"Тип ФЕР2017И5", &data::editions[2]},
    {"Action8", u"ФЕР2020", u"ФЕР&2020", u"Тип ФЕР2020", &data::editions[3]},
    {"Action9", u"Закрыть", u"Закрыть", u""},
}};

} // namespace app
