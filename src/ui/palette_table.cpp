#include "ui/palette_table.h"

#include "edit/palette.h"

namespace tahrir::ui {

namespace {

enum Group { Dur, Acc, Rep, Orn, Tup, Fing, Head, Cmd, Clip, Undo };

// Indexed like the palette; SMuFL code points of Bravura.
const std::array<PaletteLook, edit::PaletteEntries> kLooks = {{
    {Dur, U"\uE4E5", ""},        {Dur, U"\uE560", ""},       {Dur, U"\uE1DB", ""},
    {Dur, U"\uE1D9", ""},        {Dur, U"\uE1D9\uE1E7", ""}, {Dur, U"\uE1D7", ""},
    {Dur, U"\uE1D7\uE1E7", ""},  {Dur, U"\uE1D5", ""},       {Dur, U"\uE1D5\uE1E7", ""},
    {Dur, U"\uE1D3", ""},        {Dur, U"\uE1D3\uE1E7", ""}, {Dur, U"\uE1D2", ""},
    {Acc, U"\uE262", ""},        {Acc, U"\uE260", ""},       {Acc, U"\uE461", ""},
    {Acc, U"\uE460", ""},        {Acc, U"\uE261", ""},       {Acc, U"", "ALL"},
    {Rep, U"", "\u2423"},        {Rep, U"\uE040", ""},       {Rep, U"\uE041", ""},
    {Rep, U"", "1."},            {Rep, U"", "2."},           {Rep, U"\uE500", ""},
    {Rep, U"\uE501", ""},        {Rep, U"\uE047", ""},       {Rep, U"\uE048", ""},
    {Rep, U"\uE511", ""},        {Rep, U"\uE51C", ""},       {Rep, U"", "8N"},
    {Orn, U"", "1T"},            {Orn, U"", "1M"},           {Orn, U"\uE56C", ""},
    {Orn, U"", "8U"},            {Orn, U"", "8D"},           {Orn, U"\uE566", ""},
    {Orn, U"\uE566\uE260", ""},  {Orn, U"\uE222", ""},       {Orn, U"", "D"},
    {Orn, U"\uE4AC", ""},        {Orn, U"\uE4A2", ""},       {Orn, U"\uE4A0", ""},
    {Tup, U"\uE883", ""},        {Tup, U"\uE885", ""},       {Tup, U"\uE887", ""},
    {Tup, U"\uE889", ""},        {Tup, U"", "\u203F"},       {Fing, U"", "+"},
    {Fing, U"", "0"},            {Fing, U"", "1"},           {Fing, U"", "2"},
    {Fing, U"", "3"},            {Fing, U"", "4"},           {Fing, U"", "5"},
    {Head, U"\uE084\uE084", ""}, {Head, U"", "\u2669="},     {Fing, U"", "\u2228"},
    {Fing, U"", "\u2227"},       {Cmd, U"", "\u2193"},       {Cmd, U"", "\u2191"},
    {Cmd, U"", "\u2715"},
    // Note names and commands, shown in the window's language.
    {Cmd, U"", QT_TRANSLATE_NOOP("Palette", "Do")},    {Cmd, U"", QT_TRANSLATE_NOOP("Palette", "Re")},
    {Cmd, U"", QT_TRANSLATE_NOOP("Palette", "Mi")},    {Cmd, U"", QT_TRANSLATE_NOOP("Palette", "Fa")},
    {Cmd, U"", QT_TRANSLATE_NOOP("Palette", "Sol")},   {Cmd, U"", QT_TRANSLATE_NOOP("Palette", "La")},
    {Cmd, U"", QT_TRANSLATE_NOOP("Palette", "Si")},    {Clip, U"", QT_TRANSLATE_NOOP("Palette", "Cut")},
    {Clip, U"", QT_TRANSLATE_NOOP("Palette", "Copy")}, {Clip, U"", QT_TRANSLATE_NOOP("Palette", "Paste")},
    {Undo, U"", QT_TRANSLATE_NOOP("Palette", "Undo")}, {Undo, U"", QT_TRANSLATE_NOOP("Palette", "Redo")},
}};

} // namespace

const PaletteLook& PaletteLookAt(int index) {
    if (index < 0 || index >= edit::PaletteEntries) return kLooks[0];
    return kLooks[static_cast<std::size_t>(index)];
}

} // namespace tahrir::ui
