#pragma once

#include <string>
#include <string_view>

namespace bench {

/// Bytes of WIN1251 with capitals made small: texts that differ in case only become the same bytes.
[[nodiscard]] std::string folded(std::string_view bytes);

} // namespace bench
