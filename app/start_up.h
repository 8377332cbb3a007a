// SPDX-License-Identifier: MIT

#pragma once

namespace app {

/// Starts the program, runs it until its main window is closed, and returns its exit code. Where it is only
/// asked for its version or its options, it answers and starts nothing.
int run(int argc, char** argv);

} // namespace app
