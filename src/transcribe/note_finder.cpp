#include "transcribe/note_finder.h"

#include <cmath>
#include <cstdlib>

#include "transcribe/note_grids.h"

namespace tahrir::transcribe {

namespace {

// Do of octave 0 is MIDI 24: index 1 plus 23.
constexpr double kMidiOffset = 23;

struct Placement {
    double index = 0;
    double reference = 0;
};

std::optional<Placement> OnLadder(std::span<const GridRung> ladder, double r) {
    for (const GridRung& rung : ladder)
        if (r >= rung.from && r < rung.below) return Placement{rung.index, rung.reference};
    return std::nullopt;
}

// The nearer of the two dastgah degrees around r; on a tie the lower one.
Placement OnDastgah(const core::ScaleMask& mask, double r) {
    const auto& ratios = core::QuarterToneRatios();
    double lower = 0, upper = 0;
    int lowerIndex = 0, upperIndex = 0;
    for (int i = 1; i <= 25; ++i) {
        for (int j = i; j >= 0; --j) {
            if (mask[static_cast<std::size_t>(j)] != -1) continue;
            lower = ratios[static_cast<std::size_t>(j)];
            lowerIndex = j;
            break;
        }
        for (int j = i + 1; j < core::GridSize; ++j) {
            if (mask[static_cast<std::size_t>(j)] != -1) continue;
            upper = ratios[static_cast<std::size_t>(j)];
            upperIndex = j;
            break;
        }
        if (lower <= r && r < upper) break;
    }
    if (std::abs(r - upper) < std::abs(r - lower)) return {upperIndex / 2.0 + 0.5, upper};
    return {lowerIndex / 2.0 + 0.5, lower};
}

} // namespace

std::optional<FoundNote> FindNote(double period, const NoteFinderSettings& settings) {
    const double baseC = settings.BaseFrequency / 1.682 / 8;
    if (period == 0 || !std::isfinite(period)) return std::nullopt;
    const double f = settings.WaveRate / period;
    if (!(f >= baseC) || !std::isfinite(f)) return std::nullopt;
    FoundNote found;
    // Int(log2(Int(f / BaseC))): the exponent of a whole number is exact.
    found.octave = std::ilogb(std::floor(f / baseC));
    found.foldedRatio = f / std::ldexp(baseC, found.octave);
    const double r = found.foldedRatio;
    std::optional<Placement> at;
    if (settings.grid == NoteGrid::Semitone) at = OnLadder(SemitoneLadder(), r);
    else if (settings.grid == NoteGrid::QuarterTone) at = OnLadder(QuarterToneLadder(), r);
    else at = OnDastgah(settings.mask, r);
    // Outside the ladder the note is 0 and nothing is painted.
    if (!at) return found;
    found.note = found.octave * 12 + at->index + kMidiOffset;
    found.reference = at->reference;
    if (at->reference > 0)
        found.errorNote = static_cast<int>(std::floor(1000 * r / (at->reference / 2) + 0.5));
    return found;
}

std::optional<NoteGrid> GridNamed(std::string_view name) {
    if (name == "12") return NoteGrid::Semitone;
    if (name == "24") return NoteGrid::QuarterTone;
    if (name == "dastgah") return NoteGrid::Dastgah;
    return std::nullopt;
}

} // namespace tahrir::transcribe
