#pragma once
// Places a measured frequency on a note grid: twelve semitones, twenty-four positions with
// koron and sori where the player puts them, or the degrees of a dastgah mask.

#include <optional>
#include <vector>

#include "core/dastgah_scale.h"
#include "transcribe/note_finder.h"

namespace tahrir::transcribe {

struct GridTuning {
    double baseHz = 440;     // the La of MIDI note 69
    double koronCents = 50;  // how far a koron lies under its natural
    double soriCents = 50;   // how far a sori lies over its natural
};

// One position of the grid within an octave from Do: where it sounds and the note number
// it is written as (.5 for koron and sori), both relative to Do.
struct GridPoint {
    double cents = 0;
    double note = 0;
};

// The points of a grid; the dastgah grid takes the degrees the mask marks.
std::vector<GridPoint> GridPoints(NoteGrid grid, const GridTuning& tuning,
                                  const core::ScaleMask& mask);

// The MIDI number of the nearest grid point to `hz`; nullopt for a frequency <= 0.
std::optional<double> SnapToGrid(double hz, const std::vector<GridPoint>& points,
                                 const GridTuning& tuning);

} // namespace tahrir::transcribe
