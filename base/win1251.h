// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <optional>
#include <string_view>

/// Windows code page 1251, the character set of the connection.
namespace base::win1251 {

/// The character of every byte; 0x98, which the code page leaves undefined, stands for U+0098.
extern const std::array<char16_t, 256> characters;

/// Decodes any bytes without loss.
[[nodiscard]] QString decode(std::string_view bytes);

/// Encodes; nothing when the code page lacks a character.
[[nodiscard]] std::optional<QByteArray> tryEncode(QStringView text);

/// Encodes; a character that the code page lacks becomes the control character SUBSTITUTE (0x1A).
[[nodiscard]] QByteArray encode(QStringView text);

} // namespace base::win1251
