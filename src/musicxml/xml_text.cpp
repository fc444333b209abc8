#include "musicxml/xml_text.h"

#include <cmath>
#include <cstdio>

namespace tahrir::musicxml {

std::string Escape(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (const char c : utf8) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            if (static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\t') out += c;
        }
    }
    return out;
}

std::string Decimal(double value) {
    if (value == std::floor(value)) return std::to_string(static_cast<long long>(value));
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.6f", value);
    std::string out(buffer);
    while (out.back() == '0')
        out.pop_back();
    return out;
}

bool IsRightToLeft(std::string_view utf8) {
    // Lead bytes 0xD6..0xDF start the code points U+0580..U+07FF: Hebrew, Arabic, Syriac,
    // Thaana and N'Ko; 0xEF 0xAD..0xBB are the Arabic presentation forms.
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto b = static_cast<unsigned char>(utf8[i]);
        if (b >= 0xD6 && b <= 0xDF) return true;
        if (b == 0xEF && i + 1 < utf8.size()) {
            const auto n = static_cast<unsigned char>(utf8[i + 1]);
            if (n >= 0xAD && n <= 0xBB) return true;
        }
    }
    return false;
}

std::string DirAttribute(std::string_view utf8) {
    return IsRightToLeft(utf8) ? " dir=\"rtl\"" : "";
}

std::string Element(std::string_view name, std::string_view utf8) {
    std::string out = "<";
    out += name;
    out += '>';
    out += Escape(utf8);
    out += "</";
    out += name;
    out += '>';
    return out;
}

} // namespace tahrir::musicxml
