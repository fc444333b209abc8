#pragma once
// A period folded into an octave above the base Do and placed on one of three grids:
// twelve semitones, twenty-four quarter tones, or the degrees of a dastgah.

#include <optional>
#include <string_view>

#include "core/dastgah_scale.h"

namespace tahrir::transcribe {

// The grid choice, numbered as its option buttons.
enum class NoteGrid { Dastgah = 0, Semitone = 1, QuarterTone = 2 };

struct NoteFinderSettings {
    double BaseFrequency = 440; // Hz of La; Do of octave 0 is this / 1.682 / 8
    double WaveRate = 11000;    // samples a second of the period
    NoteGrid grid = NoteGrid::QuarterTone;
    core::ScaleMask mask = core::BuildScaleMask(""); // degrees of the dastgah grid
};

struct FoundNote {
    double note = 0;         // MIDI number, .5 for a quarter tone
    int errorNote = 1000;    // 1000 is exactly on the reference
    double reference = 0;    // the chosen note's reference ratio
    double foldedRatio = 0;  // the frequency folded into [1, 2) above the base Do
    int octave = 0;
};

// The note of a period in samples; nullopt (the caller keeps its last note) for a period
// of 0 or a frequency below the base Do.
std::optional<FoundNote> FindNote(double period, const NoteFinderSettings& settings);

// The grid named as the command line and the window's captions name it: "12", "24",
// "dastgah"; nullopt for anything else.
std::optional<NoteGrid> GridNamed(std::string_view name);

} // namespace tahrir::transcribe
