#pragma once

#include <QByteArray>
#include <QString>

#include <string_view>

/// Windows code page 1251, the character set of the connection.
namespace db::win1251 {

/// Decodes any bytes without loss: 0x98, which the code page leaves undefined, becomes U+0098.
[[nodiscard]] QString decode(std::string_view bytes);

/// The character of one byte.
[[nodiscard]] QChar decode(unsigned char byte);

/// Encodes; a character that the code page lacks becomes the control character SUBSTITUTE (0x1A), which no
/// catalog text holds, so that it equals nothing stored.
[[nodiscard]] QByteArray encode(QStringView text);

} // namespace db::win1251
