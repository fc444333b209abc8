#pragma once
// Sheets built line by line for the render tests.

#include <initializer_list>
#include <string>

#include "core/rhythm_pass.h"
#include "core/score_sheet.h"

namespace tahrir::render::test {

// Lines 1.. in order, each padded to 22 columns as the reader leaves them; the rhythm pass
// writes the beam codes when `beams` is set.
inline core::ScoreSheet MakeSheet(std::initializer_list<std::string> lines, bool beams = true) {
    core::ScoreSheet sheet;
    int i = 0;
    for (const std::string& text : lines) {
        std::string padded = text;
        if (padded.size() < 22) padded.resize(22, ' ');
        sheet.setLine(++i, padded);
    }
    sheet.LastLine = i;
    if (beams) core::RhythmPass(sheet);
    return sheet;
}

// Appends `count` copies of a line after the current last line.
inline void Repeat(core::ScoreSheet& sheet, const std::string& text, int count) {
    std::string padded = text;
    if (padded.size() < 22) padded.resize(22, ' ');
    for (int k = 0; k < count && sheet.LastLine < core::MaxLines; ++k)
        sheet.setLine(++sheet.LastLine, padded);
}

} // namespace tahrir::render::test
