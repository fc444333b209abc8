#pragma once
// What each of the 73 palette entries shows: its group and its symbol, a glyph of the
// music font (SMuFL code points) or a short text where the font has no symbol.

#include <array>
#include <string_view>

namespace tahrir::ui {

struct PaletteLook {
    int group;            // index into PaletteGroups
    std::u32string_view glyph; // music font code points, empty for a text entry
    std::string_view text;     // UTF-8 caption when there is no glyph
};

inline constexpr std::array<std::string_view, 10> PaletteGroups = {
    "Durations", "Accidentals", "Repeats and directives", "Ornaments", "Tuplets",
    "Fingering and plectrum", "Rhythm and tempo", "Commands", "Clipboard", "Undo"};

const PaletteLook& PaletteLookAt(int index);

} // namespace tahrir::ui
