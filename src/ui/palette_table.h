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

// The text captions of the palette entries (the others show a glyph), listed here so the
// translation tools find them; the panel shows each through Tr("Palette", ...).
inline constexpr const char* PaletteCaptionTexts[] = {
    QT_TRANSLATE_NOOP("Palette", "Do"),  QT_TRANSLATE_NOOP("Palette", "Re"),
    QT_TRANSLATE_NOOP("Palette", "Mi"),  QT_TRANSLATE_NOOP("Palette", "Fa"),
    QT_TRANSLATE_NOOP("Palette", "Sol"), QT_TRANSLATE_NOOP("Palette", "La"),
    QT_TRANSLATE_NOOP("Palette", "Si"),  QT_TRANSLATE_NOOP("Palette", "Cut"),
    QT_TRANSLATE_NOOP("Palette", "Copy"), QT_TRANSLATE_NOOP("Palette", "Paste"),
    QT_TRANSLATE_NOOP("Palette", "Redo")};

inline std::string_view PaletteGroupName(edit::PaletteGroup group) {
    return PaletteGroups[static_cast<std::size_t>(group)];
}

} // namespace tahrir::ui
