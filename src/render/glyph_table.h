#pragma once
// The music font's character codes as the layout uses them, mapped to SMuFL code points
// of Bravura, with the offsets that put each glyph's origin where the layout expects it.

#include <cstdint>
#include <string_view>

namespace tahrir::render {

struct GlyphInfo {
    char32_t codepoint = 0; // 0: no glyph, only an advance (the blank)
    double dx = 0;          // from the pen to the glyph origin, staff units at size 1
    double dy = 0;          // from the pen (top of the cell) down to the baseline
    double advance = 0;     // pen advance to the next code of the same caption
    double dxStemDown = 0;  // dx of a beamed head whose stem hangs down
    double dyAfterHead = 0; // dy when it follows a head in one caption ("q ."), if not 0
};

// The entry of one code; a code the table lacks draws nothing and takes no room.
const GlyphInfo& LookupGlyph(unsigned char code);

// One glyph of a caption placed in staff units: origin (x, y) and the glyph's size share.
struct PlacedGlyph {
    char32_t codepoint;
    double x, y;
};

// Lays out a caption such as "q ." from the pen at (x, y), at a size share of the music
// font, calling `out` for each glyph drawn.
template <typename Out>
void LayOutCaption(std::string_view caption, double x, double y, double size, bool stemDown,
                   Out&& out) {
    bool first = true;
    for (unsigned char c : caption) {
        const GlyphInfo& g = LookupGlyph(c);
        if (g.codepoint != 0) {
            const double dx = stemDown && g.dxStemDown != 0 ? g.dxStemDown : g.dx;
            const double dy = !first && g.dyAfterHead != 0 ? g.dyAfterHead : g.dy;
            out(PlacedGlyph{g.codepoint, x + dx * size, y + dy * size});
            first = false;
        }
        x += g.advance * size;
    }
}

} // namespace tahrir::render
