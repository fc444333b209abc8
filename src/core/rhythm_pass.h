#pragma once
// Beam codes (column 7 of note lines) derived from the measure and the note durations.

#include "core/score_sheet.h"

namespace tahrir::core {

// Blanks every stored beam code and writes it anew for the whole sheet.
void RhythmPass(ScoreSheet& sheet);

} // namespace tahrir::core
