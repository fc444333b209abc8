#pragma once
// The two fixed ladders of the note finder.

#include <span>

namespace tahrir::transcribe {

struct GridRung {
    double from;      // folded ratio, inclusive
    double below;     // folded ratio, exclusive
    double index;     // 1 is Do, steps of 1 a semitone
    double reference; // twice the note's ratio to Do
};

std::span<const GridRung> SemitoneLadder();
std::span<const GridRung> QuarterToneLadder();

} // namespace tahrir::transcribe
