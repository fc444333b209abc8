#pragma once
// Argument parsing shared by the sub-commands of tahrir-cli.

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tahrir::cli {

enum ExitCode { ExitOk = 0, ExitUsage = 1, ExitIo = 2 };

// A whole number within [low, high]; NaN and the infinities are not.
bool IsWholeIn(double value, double low, double high);

// What a sub-command accepts: options that take a value and options that stand alone.
struct ArgSpec {
    std::set<std::string> valued;
    std::set<std::string> flags;
};

class Args {
public:
    // Parses argv after the sub-command name. "--app-folder DIR" is always accepted.
    // On an error, ok() is false and error() says why.
    Args(const std::vector<std::string>& argv, const ArgSpec& accepted);

    bool ok() const { return m_error.empty(); }
    const std::string& error() const { return m_error; }
    const std::vector<std::string>& positional() const { return m_positional; }
    std::optional<std::string> value(const std::string& name) const;
    bool flag(const std::string& name) const { return m_flags.count(name) != 0; }
    // A valued option read as a number; nullopt when absent, error() set when not a number.
    std::optional<double> number(const std::string& name);

private:
    std::vector<std::string> m_positional;
    std::map<std::string, std::string> m_values;
    std::set<std::string> m_flags;
    std::string m_error;
};

// One sub-command: its name, a line of help, and what it runs.
struct Command {
    const char* name;
    const char* usage;
    int (*run)(const std::vector<std::string>& argv);
};

// Prints "tahrir-cli: <message>" to stderr and returns the code.
int Fail(int code, const std::string& message);

} // namespace tahrir::cli
