// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

namespace app {

/// Shows one page with all keys of the program until the user closes it.
void showKeyHelp(QWidget* parent);

} // namespace app
