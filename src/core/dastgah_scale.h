#pragma once
// The scale side of tuning: the 27-position quarter-tone grid with its ratios and names,
// the dastgah mask built from the seven signature letters, and the dastgah boxes.

#include <array>
#include <string>
#include <string_view>

#include "core/score_sheet.h"

namespace tahrir::core {

inline constexpr int GridSize = 27;
// -1 marks a degree of the 27-position quarter-tone grid, 0 not.
using ScaleMask = std::array<float, GridSize>;

// Frequency ratio to the Do of the octave, and the two-character label, of each position.
const std::array<double, GridSize>& QuarterToneRatios();
const std::array<std::string_view, GridSize>& QuarterToneNames();

// The mask of seven signature letters (Do..Si): each step's natural position cleared and
// the position of its letter set; Do's octave position 25 follows its letter.
ScaleMask BuildScaleMask(std::string_view letters);

// The seven signature letters in force at `line`: those of line 1, changed by every
// "ALL" line from line 4 up to `line` whose column 4 holds a step digit 1 to 7.
std::string SignatureAt(const ScoreSheet& sheet, int line);

// The dastgah boxes: five for each step, box 5 × (step - 1) + k with k 0 to 4 for flat,
// koron, natural, sori and sharp; the box of each step's letter is marked.
inline constexpr int DastgahBoxCount = 35;
using DastgahBoxes = std::array<bool, DastgahBoxCount>;
DastgahBoxes BoxesOf(std::string_view letters);

} // namespace tahrir::core
