#pragma once
// Places a measured frequency on a note grid: twelve semitones, twenty-four positions with
// koron and sori where the player puts them, or the degrees of a dastgah mask.

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace tahrir::transcribe {

enum class NoteGrid { Semitone, QuarterTone, Dastgah };

std::optional<NoteGrid> NoteGridOf(std::string_view name); // "12", "24", "dastgah"

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

// The 27 positions of the quarter-tone grid of a dastgah, nonzero marking a degree.
using DegreeMask = std::array<float, 27>;

std::vector<GridPoint> GridPoints(NoteGrid grid, const GridTuning& tuning,
                                  const DegreeMask& mask);

// The MIDI number of the nearest grid point to `hz`; nullopt for a frequency <= 0.
std::optional<double> SnapToGrid(double hz, const std::vector<GridPoint>& points,
                                 const GridTuning& tuning);

} // namespace tahrir::transcribe
