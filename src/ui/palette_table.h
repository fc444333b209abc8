#pragma once
// What each of the 73 palette entries shows: its group and its symbol, a glyph of the
// music font (SMuFL code points) or a short text where the font has no symbol.

#include <QtGlobal>
#include <array>
#include <string_view>

namespace tahrir::ui {

struct PaletteLook {
    int group;            // index into PaletteGroups
    std::u32string_view glyph; // music font code points, empty for a text entry
    std::string_view text;     // UTF-8 caption when there is no glyph
};

// Shown through Tr("Palette", ...).
inline constexpr std::array<std::string_view, 10> PaletteGroups = {
    QT_TRANSLATE_NOOP("Palette", "Durations"), QT_TRANSLATE_NOOP("Palette", "Accidentals"),
    QT_TRANSLATE_NOOP("Palette", "Repeats and directives"), QT_TRANSLATE_NOOP("Palette", "Ornaments"),
    QT_TRANSLATE_NOOP("Palette", "Tuplets"), QT_TRANSLATE_NOOP("Palette", "Fingering and plectrum"),
    QT_TRANSLATE_NOOP("Palette", "Rhythm and tempo"), QT_TRANSLATE_NOOP("Palette", "Commands"),
    QT_TRANSLATE_NOOP("Palette", "Clipboard"), QT_TRANSLATE_NOOP("Palette", "Undo")};

const PaletteLook& PaletteLookAt(int index);

} // namespace tahrir::ui
