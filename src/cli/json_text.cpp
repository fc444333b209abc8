#include "cli/json_text.h"

#include <cstdio>

namespace tahrir::cli {

std::string JsonString(std::string_view utf8) {
    std::string out = "\"";
    for (const char c : utf8) {
        const auto u = static_cast<unsigned char>(c);
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (u < 0x20 || u == 0x7F) {
                char buffer[8];
                std::snprintf(buffer, sizeof buffer, "\\u%04x", u);
                out += buffer;
            } else {
                out += c;
            }
        }
    }
    return out + "\"";
}

} // namespace tahrir::cli
