#pragma once

namespace app {

/// Starts the program, runs it until its main window is closed, and returns its exit code.
int run(int argc, char** argv);

} // namespace app
