#pragma once

#include <optional>

// ZELMOR Helper's command line, read before the application object exists:
// --help and --version answer and end the program (0), an unknown option is
// refused (2); otherwise nothing is returned and the application starts.
std::optional<int> handleCommandLine(int argc, char *argv[]);
