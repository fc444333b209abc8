#pragma once
// The names of the palette's boxes, in the order of `edit::PaletteGroup`.

#include <QtGlobal>
#include <array>
#include <string_view>

#include "edit/palette.h"

namespace tahrir::ui {

// Shown through Tr("Palette", ...).
inline constexpr std::array<std::string_view, edit::PaletteGroupCount> PaletteGroups = {
    QT_TRANSLATE_NOOP("Palette", "Durations"), QT_TRANSLATE_NOOP("Palette", "Accidentals"),
    QT_TRANSLATE_NOOP("Palette", "Repeats and directives"), QT_TRANSLATE_NOOP("Palette", "Ornaments"),
    QT_TRANSLATE_NOOP("Palette", "Tuplets"), QT_TRANSLATE_NOOP("Palette", "Fingering and plectrum"),
    QT_TRANSLATE_NOOP("Palette", "Rhythm and tempo"), QT_TRANSLATE_NOOP("Palette", "Commands"),
    QT_TRANSLATE_NOOP("Palette", "Clipboard"), QT_TRANSLATE_NOOP("Palette", "Undo")};

inline std::string_view PaletteGroupName(edit::PaletteGroup group) {
    return PaletteGroups[static_cast<std::size_t>(group)];
}

} // namespace tahrir::ui
