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
    CliRun run;
    run.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.out = ReadBytes(folder / "stdout");
    run.err = ReadBytes(folder / "stderr");
    return run;
}

} // namespace tahrir::test
