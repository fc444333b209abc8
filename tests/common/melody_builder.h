#pragma once
// Generated melodies for tests and benchmarks: 4/4 measures of quarters, eighths,
// sixteenths, dotted notes, triplets, ties and quarter tones, from a seed.

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "core/rhythm_pass.h"
#include "core/score_sheet.h"

namespace tahrir::test {

// One note line at staff position `pos` (0 the bottom line, 8 the top line): step, octave,
// duration, accidental, blank beam code, mark.
inline std::string MelodyNote(int pos, int ticks, char accidental = ' ',
                              const char* mark = "  ") {
    const int step = (pos + 23) % 7 + 1, octave = (pos + 23) / 7;
    std::string d = std::to_string(ticks);
    return std::to_string(step) + std::to_string(octave) + std::string(3 - d.size(), ' ') + d +
           accidental + ' ' + mark;
}

// A melody of `measures` measures in 4/4, its beams written by the rhythm pass.
inline core::ScoreSheet MakeMelody(int measures, unsigned seed) {
    // Beats (and the two-beat dotted quarter with its eighth) as lists of durations.
    static const std::vector<std::vector<int>> kBeats = {
        {8},          {4, 4},    {4, 2, 2}, {2, 2, 4}, {2, 2, 2, 2}, {6, 2},
        {2, 6},       {2, 4, 2}, {3, 1, 4}, {4, 4, 4}, {12, 4},      {4, 4},
        {2, 2, 2, 2}, {4, 2, 2}, {8},      {8},       {16}};
    std::mt19937 rng(seed);
    const auto pick = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); };
    core::ScoreSheet sheet;
    sheet.setLine(1, "       G");
    sheet.setLine(2, "TEMPO72");
    sheet.setLine(3, "RHYTM4/4");
    int line = 3, pos = 4;
    for (int m = 0; m < measures && line < core::MaxLines - 12; ++m) {
        for (int beat = 0; beat < 4;) {
            const std::vector<int>& figure =
                kBeats[static_cast<std::size_t>(pick(static_cast<int>(kBeats.size())))];
            const bool twoBeats = figure[0] > 8;
            if (twoBeats && beat == 3) continue;
            const bool triplet = figure.size() == 3 && figure[0] == 4 && figure[2] == 4;
            for (std::size_t k = 0; k < figure.size(); ++k) {
                pos = std::clamp(pos + pick(5) - 2, -3, 11);
                const char accidental = pick(8) == 0 ? "KSDB"[pick(4)] : ' ';
                const char* mark = triplet && k == 0                      ? "L3"
                                   : k + 1 == figure.size() && pick(6) == 0 ? "TI"
                                                                           : "  ";
                sheet.setLine(++line, MelodyNote(pos, figure[k], accidental, mark));
            }
            beat += twoBeats ? 2 : 1;
        }
    }
    sheet.LastLine = line;
    core::RhythmPass(sheet);
    return sheet;
}

} // namespace tahrir::test
