// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QStringView>

#include <cstdint>
#include <string>
#include <string_view>

/// Values as they stand in the XML of a workbook. Texts are UTF-8 in which a control character is written as
/// _xHHHH_, and so is the "_" of what a reader would take for that (ST_Xstring of ECMA-376 part 1,
/// 22.9.2.19).
namespace xlsx {

/// Appends a text of WIN1251.
void appendText(std::string& xml, std::string_view win1251);

/// The same of any other text; half a surrogate pair is escaped as well.
[[nodiscard]] QByteArray textOf(QStringView text);

} // namespace xlsx
