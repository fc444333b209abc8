#include "core/farsi_text.h"

#include <algorithm>

namespace tahrir::core {

namespace {

// The upper half of the old code page, from byte 128 on. Box-drawing and shading bytes
// (176-223) have no text meaning and become blanks, except 214 and 215 (-42 and -41 as
// signed bytes), which old texts used as the zero-width non-joiner and the stretching
// tatweel.
constexpr std::string_view kUpperHalf[128] = {
    // 128-137: Persian digits
    "0", "1", "2", "3", "4", "5", "6", "7", "8", "9",
    // 138-143: comma, tatweel, question mark, alef madda, yeh hamza, hamza
    "\xA1", "\xDC", "\xBF", "\xC2", "\xC6", "\xC1",
    // 144-159: alef (2), beh (2), peh (2), teh (2), theh (2), jeem (2), tcheh (2), hah (2)
    "\xC7", "\xC7", "\xC8", "\xC8", "\x81", "\x81", "\xCA", "\xCA", "\xCB", "\xCB", "\xCC",
    "\xCC", "\x8D", "\x8D", "\xCD", "\xCD",
    // 160-175: khah (2), dal, thal, reh, zain, jeh, seen (2), sheen (2), sad (2), dad (2), tah
    "\xCE", "\xCE", "\xCF", "\xD0", "\xD1", "\xD2", "\x8E", "\xD3", "\xD3", "\xD4", "\xD4",
    "\xD5", "\xD5", "\xD6", "\xD6", "\xD8",
    // 176-213: shading and box drawing
    " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ",
    " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ", " ",
    " ", " ",
    // 214, 215: the two bytes handled apart
    "\x9D", "\xDC",
    // 216-223: box drawing and blocks
    " ", " ", " ", " ", " ", " ", " ", " ",
    // 224-232: zah, ain (4), ghain (4)
    "\xD9", "\xDA", "\xDA", "\xDA", "\xDA", "\xDB", "\xDB", "\xDB", "\xDB",
    // 233-240: feh (2), qaf (2), keheh (2), gaf (2)
    "\xDD", "\xDD", "\xDE", "\xDE", "\x98", "\x98", "\x90", "\x90",
    // 241-248: lam, lam-alef, lam, meem (2), noon (2), waw
    "\xE1", "\xE1\xC7", "\xE1", "\xE3", "\xE3", "\xE4", "\xE4", "\xE6",
    // 249-255: heh (3), yeh (3), no-break space
    "\xE5", "\xE5", "\xE5", "\xED", "\xED", "\xED", "\xA0",
};

std::array<std::string_view, 256> BuildTable() {
    static constexpr auto ascii = [] {
        std::array<char, 128> bytes{};
        for (int i = 0; i < 128; ++i) bytes[static_cast<std::size_t>(i)] = static_cast<char>(i);
        return bytes;
    }();
    std::array<std::string_view, 256> table{};
    for (std::size_t i = 0; i < 128; ++i) table[i] = std::string_view(&ascii[i], 1);
    for (std::size_t i = 0; i < 128; ++i) table[128 + i] = kUpperHalf[i];
    return table;
}

bool HoldsPersian(std::string_view line) {
    return std::any_of(line.begin(), line.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= 128; });
}

} // namespace

const std::array<std::string_view, 256>& FarsiTextTable() {
    static const std::array<std::string_view, 256> table = BuildTable();
    return table;
}

std::string FarsiToCp1256(std::string_view legacy) {
    const auto& table = FarsiTextTable();
    std::string out;
    out.reserve(legacy.size() + 8);
    std::size_t start = 0;
    while (start <= legacy.size()) {
        const std::size_t end = std::min(legacy.find('<', start), legacy.size());
        const std::string_view line = legacy.substr(start, end - start);
        const bool swap = HoldsPersian(line);
        for (char c : line) {
            if (swap && c == '(') c = ')';
            else if (swap && c == ')') c = '(';
            out += table[static_cast<unsigned char>(c)];
        }
        if (end == legacy.size()) break;
        out += "\r\n";
        start = end + 1;
    }
    return out;
}

} // namespace tahrir::core
