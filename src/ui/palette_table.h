#pragma once
// The names of the palette's boxes, in the order of `edit::PaletteGroup`.

#include <array>
#include <string_view>

#include "edit/palette.h"

namespace tahrir::ui {

inline constexpr std::array<std::string_view, edit::PaletteGroupCount> PaletteGroups = {
    "Durations", "Accidentals", "Repeats and directives", "Ornaments", "Tuplets",
    "Fingering and plectrum", "Rhythm and tempo", "Commands", "Clipboard", "Undo"};

inline std::string_view PaletteGroupName(edit::PaletteGroup group) {
    return PaletteGroups[static_cast<std::size_t>(group)];
}

} // namespace tahrir::ui
