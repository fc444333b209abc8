#include "cli/cli_args.h"

#include <charconv>
#include <cmath>
#include <iostream>

namespace tahrir::cli {

Args::Args(const std::vector<std::string>& argv, const ArgSpec& accepted) {
    for (std::size_t i = 0; i < argv.size(); ++i) {
        const std::string& a = argv[i];
        if (a.size() > 2 && a.rfind("--", 0) == 0) {
            if (accepted.valued.count(a) || a == "--app-folder") {
                if (i + 1 >= argv.size()) {
                    m_error = "option " + a + " needs a value";
                    return;
                }
                m_values[a] = argv[++i];
            } else if (accepted.flags.count(a)) {
                m_flags.insert(a);
            } else {
                m_error = "unknown option " + a;
                return;
            }
        } else if (a == "-o") {
            if (i + 1 >= argv.size()) {
                m_error = "option -o needs a file name";
                return;
            }
            m_values["-o"] = argv[++i];
        } else {
            m_positional.push_back(a);
        }
    }
}

std::optional<std::string> Args::value(const std::string& name) const {
    const auto it = m_values.find(name);
    if (it == m_values.end()) return std::nullopt;
    return it->second;
}

std::optional<double> Args::number(const std::string& name) {
    const auto text = value(name);
    if (!text) return std::nullopt;
    double v = 0;
    const auto [ptr, ec] = std::from_chars(text->data(), text->data() + text->size(), v);
    if (ec != std::errc() || ptr != text->data() + text->size()) {
        m_error = "option " + name + " needs a number, not \"" + *text + "\"";
        return std::nullopt;
    }
    return v;
}

int Fail(int code, const std::string& message) {
    std::cerr << "tahrir-cli: " << message << '\n';
    return code;
}

bool IsWholeIn(double value, double low, double high) {
    return value >= low && value <= high && value == std::floor(value);
}

} // namespace tahrir::cli
