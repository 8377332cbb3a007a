// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace grid {

/// Tool tip of a field for words to look for.
[[nodiscard]] QString searchHint();

/// What has become of a search that is complete: "3 из 57" with the number of the hit in focus, else how many
/// there are.
[[nodiscard]] QString searchOutcome(std::optional<std::int64_t> number, std::int64_t count);

} // namespace grid
