#pragma once
// Beam codes (column 7 of note lines) derived from the measure and the note durations.

#include <span>
#include <string_view>

#include "core/score_sheet.h"

namespace tahrir::core {

// The measure length that switches the bar check off.
inline constexpr float kNoBarCheck = 1000000.0f;

// A measure as the pass reads it from a rhythm payload such as "4/4" or "12/8".
struct Measure {
    int numerator = 0;
    int denominator = 0;
    float MeasureTicks = kNoBarCheck; // 32nds of a full measure
    bool CompoundMeasure = false;     // beats of three eighths

    int beatTicks() const { return CompoundMeasure ? 12 : 8; }
};

// Numerator from the first three characters, denominator from the two behind "/".
// A zero denominator or a measure of no length gives kNoBarCheck.
Measure ReadMeasure(std::string_view payload);

// How many notes from the front of `durations` form a beam group, and the code of the last.
struct BeamMatch {
    int size = 1; // 1: the first note stands alone
    char closing = ' ';
};

// The longest pattern of the beam table that `durations` begins with and that fits in
// `room` 32nds.
BeamMatch MatchBeamPattern(std::span<const int> durations, int room);

// Blanks every stored beam code and writes it anew for the whole sheet.
void RhythmPass(ScoreSheet& sheet);

} // namespace tahrir::core
