#include "render/glyph_table.h"

#include <array>

namespace tahrir::render {

namespace {

struct Row {
    unsigned char code;
    GlyphInfo info;
};

// Heads sit with their centre on the baseline, 5.55 below the pen; accidentals and time
// digits 5.5. Rests, clefs and signs are shifted so they land on their staff lines.
constexpr Row kRows[] = {
    {'w', {0xE0A2, 0.1, 5.55, 1.8}},       // whole note
    {'h', {0xE1D3, 0.1, 5.55, 1.5}},       // half, stem up
    {'H', {0xE1D4, 0.1, 5.55, 1.5}},       // half, stem down
    {'q', {0xE1D5, 0.1, 5.55, 1.5}},       // quarter, stem up
    {'Q', {0xE1D6, 0.1, 5.55, 1.5}},       // quarter, stem down
    {'e', {0xE1D7, 0.1, 5.55, 1.5}},       // eighth alone, up
    {'E', {0xE1D8, 0.1, 5.55, 1.5}},       // eighth alone, down
    {'x', {0xE1D9, 0.1, 5.55, 1.5}},       // 16th alone, up
    {'X', {0xE1DA, 0.1, 5.55, 1.5}},       // 16th alone, down
    {'r', {0xE1DB, 0.1, 5.55, 1.5}},       // 32nd alone, up
    {'R', {0xE1DC, 0.1, 5.55, 1.5}},       // 32nd alone, down
    {'N', {0xE0A4, -0.29, 5.55, 1.3, 0.78}}, // black head under a beam
    {0x01, {0xE0A4, 0.1, 5.55, 1.3}},      // plain black head (interval companion)
    {0x02, {0xE0A3, 0.1, 5.55, 1.3}},      // plain open head
    {'g', {0xE560, 0.1, 5.55, 1.5}},       // grace note, stem up
    {'G', {0xE561, 0.45, 5.55, 1.5}},      // grace note, stem down
    {'-', {0xE024, 0.5, 5.55, 1.2}},       // bar of the whole and half rest
    {'D', {0xE4E5, 0.1, 5.5, 1.2}},        // quarter rest
    {'a', {0xE4E6, 0.1, 6.0, 1.2}},        // eighth rest
    {'d', {0xE4E7, 0.1, 5.5, 1.4}},        // 16th rest
    {0xAE, {0xE4E8, 0.1, 5.0, 1.6}},       // 32nd rest
    {'#', {0xE262, 0, 5.5, 1.1}},          // sharp
    {'b', {0xE260, 0, 5.5, 1.0}},          // flat
    {'n', {0xE261, 0, 5.5, 0.8}},          // natural
    {'<', {0xE461, 0, 5.5, 1.8}},          // sori
    {'!', {0xE460, 0, 5.5, 1.3}},          // koron
    {'&', {0xE050, 0, 4.6, 2.8}},          // G clef on its line
    {'?', {0xE062, 0, -5.13, 2.8}},        // F clef on its line
    {'[', {0xE032, -0.3, 5.5, 1.0}},       // final bar
    {']', {0xE040, 0, 5.5, 1.5}},          // repeat start
    {'}', {0xE041, -0.3, 5.5, 1.5}},       // repeat end
    {'@', {0xE047, 0, 8.0, 2.3}},          // large repeat sign
    {0x91, {0xE500, 0, 5.5, 2.2}},         // one- and two-measure repeat
    {'.', {0xE1E7, 0.3, 7.3, 0.5, 0, 5.3}}, // dot; behind a head at the head's height
    {0xD8, {0xE1E7, 0.3, 7.3, 0.5}},       // finger dot
    {'`', {0xE566, 0, 5.55, 2.1}},         // trill
    {'i', {0xE260, 0.2, 5.55, 1.0}},       // flat behind a trill
    {'m', {0xE56C, 0, 5.55, 3.0}},         // mordent
    {'>', {0xE4A0, 0, 5.55, 1.4}},         // accent
    {'+', {0xE633, 0, 5.55, 1.1}},         // thumb
    {0xF1, {0xED10, 0, 5.55, 0.7}},        // fingers 0 to 5
    {0xF2, {0xED11, 0, 5.55, 0.7}},
    {0xF3, {0xED12, 0, 5.55, 0.7}},
    {0xF4, {0xED13, 0, 5.55, 0.7}},
    {0xF5, {0xED14, 0, 5.55, 0.7}},
    {0xF6, {0xED15, 0, 5.55, 0.7}},
    {0xF9, {0xED1A, 0, 5.55, 0.5}},        // "Z" finger mark
    {0xFA, {0xED1B, 0, 5.55, 0.5}},        // "B" finger mark
    {'v', {0xE612, 0, 5.55, 1.0}},         // left plectrum
    {'^', {0xE610, 0, 5.55, 1.3}},         // right plectrum
    {0xCD, {0xE222, 0.6, 5.55, 1.2}},      // riz
    {'o', {0xE614, 0, 6.32, 0.9}},         // tekyeh
    {'/', {0xE101, 0, 5.55, 2.2}},         // spacer mark of the working view
    {'C', {0xE08A, 0, 5.5, 1.7}},          // control line mark of the working view
    {'(', {0xE26A, 0, -0.95, 0.6}},        // barline mark of the working view
    {')', {0xE26B, 0, -0.95, 0.6}},
    {' ', {0, 0, 0, 0.5}},
    {'0', {0xE080, 0, 5.5, 1.9}}, {'1', {0xE081, 0, 5.5, 1.4}}, {'2', {0xE082, 0, 5.5, 1.8}},
    {'3', {0xE083, 0, 5.5, 1.7}}, {'4', {0xE084, 0, 5.5, 1.9}}, {'5', {0xE085, 0, 5.5, 1.7}},
    {'6', {0xE086, 0, 5.5, 1.8}}, {'7', {0xE087, 0, 5.5, 1.8}}, {'8', {0xE088, 0, 5.5, 1.8}},
    {'9', {0xE089, 0, 5.5, 1.8}},
};

std::array<GlyphInfo, 256> BuildTable() {
    std::array<GlyphInfo, 256> table{};
    for (const Row& r : kRows) table[r.code] = r.info;
    return table;
}

} // namespace

const GlyphInfo& LookupGlyph(unsigned char code) {
    static const std::array<GlyphInfo, 256> table = BuildTable();
    return table[code];
}

} // namespace tahrir::render
