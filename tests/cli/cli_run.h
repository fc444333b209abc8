#pragma once
// Runs the built tahrir-cli and captures what it prints.

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "temp_folder.h"

namespace tahrir::test {

struct CliRun {
    int code = -1;
    std::string out;
    std::string err;
};

inline std::string ShellQuote(const std::string& arg) {
    std::string out = "'";
    for (char c : arg) out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

// Runs tahrir-cli with `args` and --app-folder inside `folder`.
inline CliRun RunCli(const TempFolder& folder, const std::vector<std::string>& args) {
    std::string command = ShellQuote(TAHRIR_CLI);
    for (const auto& a : args) command += " " + ShellQuote(a);
    command += " --app-folder " + ShellQuote((folder / "app").string());
    command += " >" + ShellQuote((folder / "stdout").string());
    command += " 2>" + ShellQuote((folder / "stderr").string());
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadBytes(folder / "stdout"),
            ReadBytes(folder / "stderr")};
}

} // namespace tahrir::test
