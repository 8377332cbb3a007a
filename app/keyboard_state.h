// SPDX-License-Identifier: MIT

#pragma once

namespace app {

/// Which lock keys are on.
struct KeyboardState {
    bool capsLock = false;
    bool numLock = false;
    bool scrollLock = false;
};

/// Asks the system; all off where it cannot be asked.
[[nodiscard]] KeyboardState readKeyboardState();

} // namespace app
