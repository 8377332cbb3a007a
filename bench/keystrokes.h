// SPDX-License-Identifier: MIT

#pragma once

#include "bench/measure.h"

#include <QString>

#include <functional>

class QLineEdit;
class QWidget;

namespace bench {

/// Types a text into a field and deletes it again, `rounds` times after one that does not count, and measures
/// each key until `painted` has been painted. `bare` does the least work for the field's text. Returns the
/// medians of the key that takes longest. Throws std::runtime_error when the field does not end empty.
[[nodiscard]] Medians worstKeystroke(int rounds, QLineEdit& field, QWidget& painted, const QString& text,
                                     const std::function<void(const QString& typed)>& bare);

} // namespace bench
