#pragma once
// Named key signatures from "Kookha.tun", the quarter-tone grid mask of a signature, and
// the step letters of the dastgah boxes.

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/dastgah_scale.h"
#include "core/score_sheet.h"

namespace tahrir::play {

class MidiOut;

struct ScaleEntry {
    std::string name; // what the list shows
    std::string line; // the text that becomes line 1 of the score
};

struct TuningFile {
    std::vector<ScaleEntry> entries;
    bool complete = true; // false when an odd entry count stopped the loading
    bool opened = true;
};

// Pairs of comma-or-line delimited values, quoted or not. A last name without its text
// ends the loading; the pairs before it stay.
TuningFile ParseTuning(std::string_view bytes);
TuningFile LoadTuning(const std::filesystem::path& file);

// The chosen entry (0-based) with two blanks after it becomes line 1. No choice (or an
// index off the list) leaves line 1 as it is; returns whether it changed.
bool ApplyScale(core::ScoreSheet& sheet, const TuningFile& tuning, int chosen);

// The quarter-tone grid mask lives in core, shared with the transcription.
using core::BuildScaleMask;
using core::GridSize;
using core::ScaleMask;

// The dastgah boxes: five rows for each step ("#", "<", natural, "--!", "b"); the row of
// a step's letter, or -1 for a letter that has no box.
int DastgahRow(char letter);
// Line 1 rewritten from the ticked row of each step, other columns kept.
void SetStepLetters(core::ScoreSheet& sheet, const std::array<int, 7>& rows);

// The base frequency slider of the transcription window (330..660 Hz): within about a
// semitone of 440 it moves the bend centre; then channel 2 is bent a quarter tone up,
// channel 3 to the centre, and channel 4 (always) a quarter tone down from the centre.
class BaseFrequencyTuner {
public:
    void apply(MidiOut& midi, double hertz);
    double BendCentre = 64;
};

// The standard tuning button: the transposition slider back to its centre.
int StandardTuningTranspose();

} // namespace tahrir::play
