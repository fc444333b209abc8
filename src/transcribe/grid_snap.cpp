#include "transcribe/grid_snap.h"

#include <cmath>
#include <limits>

namespace tahrir::transcribe {
namespace {

bool IsNatural(int semitone) {
    const int pc = ((semitone % 12) + 12) % 12;
    return pc == 0 || pc == 2 || pc == 4 || pc == 5 || pc == 7 || pc == 9 || pc == 11;
}

// The quarter position above `semitone`: the sori of a natural, else the koron of the
// natural above (C sori, D koron, D sori, E koron, E sori, F sori, G koron, ...).
GridPoint HalfAbove(int semitone, const GridTuning& t) {
    const double cents = IsNatural(semitone) ? semitone * 100.0 + t.soriCents
                                             : (semitone + 1) * 100.0 - t.koronCents;
    return {cents, semitone + 0.5};
}

} // namespace

std::vector<GridPoint> GridPoints(NoteGrid grid, const GridTuning& t, const core::ScaleMask& mask) {
    std::vector<GridPoint> points;
    if (grid != NoteGrid::Dastgah) {
        for (int s = 0; s < 12; ++s) {
            points.push_back({s * 100.0, static_cast<double>(s)});
            if (grid == NoteGrid::QuarterTone) points.push_back(HalfAbove(s, t));
        }
        return points;
    }
    // Odd positions are semitones ((i - 1) / 2 above Do); even ones lie between. Position
    // 0 is Do koron, and 24 is Do koron of the next octave when 0 is marked, else Si sori.
    const bool doKoron = mask[0] != 0;
    for (int i = 0; i < static_cast<int>(mask.size()); ++i) {
        if (mask[static_cast<std::size_t>(i)] == 0) continue;
        if (i % 2 == 1)
            points.push_back({(i - 1) * 50.0, (i - 1) / 2.0});
        else if (i == 0 || (i == 24 && doKoron))
            points.push_back({i * 50.0 - t.koronCents, i / 2.0 - 0.5});
        else
            points.push_back(HalfAbove(i / 2 - 1, t));
    }
    return points;
}

std::optional<double> SnapToGrid(double hz, const std::vector<GridPoint>& points,
                                 const GridTuning& t) {
    if (!(hz > 0) || points.empty() || !(t.baseHz > 0)) return std::nullopt;
    // Cents above the Do of MIDI note 0.
    const double cents = 6900.0 + 1200.0 * std::log2(hz / t.baseHz);
    const double octave = std::floor(cents / 1200.0);
    double best = std::numeric_limits<double>::infinity(), note = 0;
    for (int o = -1; o <= 1; ++o) {
        for (const GridPoint& p : points) {
            const double d = std::abs(cents - ((octave + o) * 1200.0 + p.cents));
            if (d < best) {
                best = d;
                note = (octave + o) * 12.0 + p.note;
            }
        }
    }
    return note;
}

} // namespace tahrir::transcribe
