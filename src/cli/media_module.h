#pragma once
// The boundary between tahrir-cli and its media module: one C entry point that runs a
// sub-command by the name of its function.

#include <string>
#include <vector>

// Runs the sub-command `function` (a name from module_commands.def) with `argv`; returns its
// exit code, or -1 when the module has no such command.
extern "C" int tahrir_cli_module_run(const char* function, const std::vector<std::string>* argv);

namespace tahrir::cli {

inline constexpr const char* MediaModuleName = "tahrir-cli-media.so";

} // namespace tahrir::cli
