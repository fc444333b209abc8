#include "render/text_util.h"

#include <cctype>
#include <cstdlib>

namespace tahrir::render {

double Val(std::string_view text) {
    std::string digits;
    std::size_t i = 0;
    while (i < text.size() && text[i] == ' ') ++i;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) digits += text[i++];
    bool point = false;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (std::isdigit(static_cast<unsigned char>(c))) {
            digits += c;
        } else if (c == '.' && !point) {
            point = true;
            digits += c;
        } else if (c != ' ') {
            break;
        }
    }
    return std::strtod(digits.c_str(), nullptr);
}

std::string Upper(std::string_view text, std::size_t n) {
    std::string out(text.substr(0, n));
    for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return out;
}

std::string_view Trim(std::string_view text) {
    const auto a = text.find_first_not_of(' ');
    if (a == std::string_view::npos) return {};
    const auto b = text.find_last_not_of(' ');
    return text.substr(a, b - a + 1);
}

RhythmFields SplitRhythm(std::string_view line) {
    if (line.size() < 6) return {};
    std::string_view payload = line.substr(5);
    const auto slash = payload.find('/');
    if (slash == std::string_view::npos) return {Trim(payload), {}};
    return {Trim(payload.substr(0, slash)), Trim(payload.substr(slash + 1))};
}

} // namespace tahrir::render
