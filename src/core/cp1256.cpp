#include "core/cp1256.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <unordered_map>

namespace tahrir::core {

namespace {

// The code point of every byte, taken once from the C library's converter.
struct Cp1256Table {
    std::array<char32_t, 256> toUnicode{};
    std::unordered_map<char32_t, unsigned char> fromUnicode;

    Cp1256Table() {
        iconv_t cd = iconv_open("UTF-32LE", "CP1256");
        for (int b = 0; b < 256; ++b) {
            toUnicode[static_cast<std::size_t>(b)] = b < 128 ? static_cast<char32_t>(b) : U'\uFFFD';
            if (b >= 128 && cd != reinterpret_cast<iconv_t>(-1)) {
                char in = static_cast<char>(b);
                unsigned char out[4] = {};
                char* inp = &in;
                char* outp = reinterpret_cast<char*>(out);
                std::size_t inLeft = 1;
                std::size_t outLeft = 4;
                if (iconv(cd, &inp, &inLeft, &outp, &outLeft) != static_cast<std::size_t>(-1) &&
                    outLeft == 0) {
                    toUnicode[static_cast<std::size_t>(b)] =
                        static_cast<char32_t>(out[0] | (out[1] << 8) | (out[2] << 16) |
                                              (static_cast<std::uint32_t>(out[3]) << 24));
                }
                iconv(cd, nullptr, nullptr, nullptr, nullptr);
            }
            fromUnicode.emplace(toUnicode[static_cast<std::size_t>(b)],
                                static_cast<unsigned char>(b));
        }
        if (cd != reinterpret_cast<iconv_t>(-1)) iconv_close(cd);
    }
};

const Cp1256Table& Table() {
    static const Cp1256Table table;
    return table;
}

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// Decodes one UTF-8 sequence at i; malformed bytes decode as U+FFFD and advance by one.
char32_t NextCodePoint(std::string_view s, std::size_t& i) {
    const auto b0 = static_cast<unsigned char>(s[i]);
    int extra = b0 < 0x80 ? 0 : (b0 >> 5) == 6 ? 1 : (b0 >> 4) == 14 ? 2 : (b0 >> 3) == 30 ? 3 : -1;
    if (extra == 0) {
        ++i;
        return b0;
    }
    if (extra < 0 || i + static_cast<std::size_t>(extra) >= s.size()) {
        ++i;
        return U'\uFFFD';
    }
    char32_t c = b0 & (0x3F >> extra);
    for (int k = 1; k <= extra; ++k) {
        const auto b = static_cast<unsigned char>(s[i + static_cast<std::size_t>(k)]);
        if ((b & 0xC0) != 0x80) {
            ++i;
            return U'\uFFFD';
        }
        c = (c << 6) | (b & 0x3F);
    }
    i += static_cast<std::size_t>(extra) + 1;
    return c;
}

// Characters a Persian keyboard types that the code page holds in another form: the
// Persian yeh as the Arabic one, Persian and Arabic-Indic digits as the plain digits.
std::optional<unsigned char> Folded(char32_t c) {
    if (c == U'\u06CC') return static_cast<unsigned char>(0xED);
    if (c >= U'\u06F0' && c <= U'\u06F9') return static_cast<unsigned char>('0' + (c - U'\u06F0'));
    if (c >= U'\u0660' && c <= U'\u0669') return static_cast<unsigned char>('0' + (c - U'\u0660'));
    return std::nullopt;
}

} // namespace

std::string Cp1256ToUtf8(std::string_view cp1256) {
    std::string out;
    out.reserve(cp1256.size() * 2);
    AppendCp1256AsUtf8(out, cp1256);
    return out;
}

void AppendCp1256AsUtf8(std::string& out, std::string_view cp1256) {
    const bool ascii = std::all_of(cp1256.begin(), cp1256.end(),
                                   [](char ch) { return static_cast<unsigned char>(ch) < 128; });
    if (ascii) { // the common case needs no table, so no converter is loaded for it
        out += cp1256;
        return;
    }
    const auto& table = Table();
    for (char ch : cp1256) AppendUtf8(out, table.toUnicode[static_cast<unsigned char>(ch)]);
}

std::string Utf8ToCp1256(std::string_view utf8) {
    const auto& table = Table();
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const char32_t c = NextCodePoint(utf8, i);
        const auto it = table.fromUnicode.find(c);
        if (it != table.fromUnicode.end()) out += static_cast<char>(it->second);
        else out += static_cast<char>(Folded(c).value_or('?'));
    }
    return out;
}

} // namespace tahrir::core
