#include "transcribe/note_segmenter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tahrir::transcribe {
namespace {

struct Span {
    std::size_t begin;
    std::size_t end;    // one past
    bool onset = false; // begins at a spectral onset
};

constexpr double kGlideCents = 25; // farther than this from a level is on the way out

double Median(std::vector<double> v) {
    if (v.empty()) return 0;
    const auto mid = v.begin() + static_cast<std::ptrdiff_t>(v.size() / 2);
    std::nth_element(v.begin(), mid, v.end());
    return *mid;
}

// Optimal partition of cents[b, e) into constant levels (squared error plus a penalty for
// each level), with pruning of start points that can no longer win, each part at least
// `minLen` long.
std::vector<Span> PartitionLevels(const std::vector<double>& cents, Span run, std::size_t minLen,
                                  double penalty) {
    const std::size_t n = run.end - run.begin;
    if (n < 2 * minLen) return {run};
    std::vector<double> s1(n + 1, 0), s2(n + 1, 0);
    for (std::size_t i = 0; i < n; ++i) {
        s1[i + 1] = s1[i] + cents[run.begin + i];
        s2[i + 1] = s2[i] + cents[run.begin + i] * cents[run.begin + i];
    }
    auto cost = [&](std::size_t a, std::size_t b) {
        const double sum = s1[b] - s1[a];
        return (s2[b] - s2[a]) - sum * sum / static_cast<double>(b - a);
    };
    const double inf = std::numeric_limits<double>::infinity();
    std::vector<double> best(n + 1, inf);
    std::vector<std::size_t> last(n + 1, 0);
    best[0] = -penalty;
    std::vector<std::size_t> starts;
    for (std::size_t t = minLen; t <= n; ++t) {
        if (std::isfinite(best[t - minLen])) starts.push_back(t - minLen);
        for (std::size_t s : starts) {
            const double v = best[s] + cost(s, t) + penalty;
            if (v < best[t]) {
                best[t] = v;
                last[t] = s;
            }
        }
        std::erase_if(starts, [&](std::size_t s) { return best[s] + cost(s, t) > best[t]; });
    }
    std::vector<Span> parts;
    for (std::size_t t = n; t > 0; t = last[t])
        parts.push_back({run.begin + last[t], run.begin + t});
    std::reverse(parts.begin(), parts.end());
    // A glide between two levels belongs to the new note: each cut moves back to the last
    // frame still near the old level.
    for (std::size_t i = 1; i < parts.size(); ++i) {
        std::vector<double> old(cents.begin() + static_cast<std::ptrdiff_t>(parts[i - 1].begin),
                                cents.begin() + static_cast<std::ptrdiff_t>(parts[i - 1].end));
        const double level = Median(std::move(old));
        std::size_t k = parts[i].begin;
        while (k > parts[i - 1].begin + minLen / 2 && std::abs(cents[k - 1] - level) > kGlideCents)
            --k;
        parts[i - 1].end = parts[i].begin = k;
    }
    return parts;
}

// A new note of the same pitch: a sharp rise of the level, or a shallow dip of the level
// where the waveform loses its periodicity for a moment (a legato re-articulation).
bool Rearticulates(const std::vector<PitchFrame>& frames, std::size_t t, double riseDb,
                   double aperiodicityFloor) {
    if (t == 0 || t + 1 >= frames.size()) return false;
    const float s = frames[t].onsetStrength;
    if (s >= riseDb && s >= frames[t - 1].onsetStrength && s >= frames[t + 1].onsetStrength)
        return true;
    constexpr std::size_t kReach = 5;
    constexpr float kDipDb = 1.5f, kAperiodicRatio = 1.6f;
    const float level = frames[t].rmsDb;
    if (level > frames[t - 1].rmsDb || level > frames[t + 1].rmsDb) return false;
    float before = level, after = level, bump = 0;
    // The reach stops at the ends of the track.
    for (std::size_t k = 1; k <= kReach; ++k) {
        if (k <= t) before = std::max(before, frames[t - k].rmsDb);
        if (t + k < frames.size()) after = std::max(after, frames[t + k].rmsDb);
    }
    for (std::size_t k = t - 1; k <= t + 1; ++k) bump = std::max(bump, frames[k].aperiodicity);
    return before - level >= kDipDb && after - level >= kDipDb &&
           bump >= kAperiodicRatio * aperiodicityFloor;
}

// Cuts a part where a note of the same pitch begins again, each piece at least `minLen`
// long. A cut at a dip starts the new note after the dip's lowest frame.
void SplitAtOnsets(const std::vector<PitchFrame>& frames, Span part, std::size_t minLen,
                   double riseDb, std::vector<Span>& out) {
    std::vector<double> aperiodicity;
    for (std::size_t t = part.begin; t < part.end; ++t)
        aperiodicity.push_back(frames[t].aperiodicity);
    const double floor = std::max(Median(std::move(aperiodicity)), 0.005);
    std::size_t begin = part.begin;
    bool atOnset = part.onset;
    for (std::size_t t = part.begin + minLen; t + minLen <= part.end; ++t) {
        if (t - begin < minLen || !Rearticulates(frames, t, riseDb, floor)) continue;
        out.push_back({begin, t, atOnset});
        begin = t;
        atOnset = true;
    }
    out.push_back({begin, part.end, atOnset});
}

double StableCents(const std::vector<double>& cents, Span part) {
    const std::size_t n = part.end - part.begin;
    const std::size_t skipHead = n / 5, skipTail = n / 10;
    std::vector<double> v(cents.begin() + static_cast<std::ptrdiff_t>(part.begin + skipHead),
                          cents.begin() + static_cast<std::ptrdiff_t>(part.end - skipTail));
    return Median(std::move(v));
}

// Where the note of `part` begins. A sharp rise of the level shortly before its pitch
// settles is its attack (a plucked note speaks before its pitch is clear). Else, out of
// another note (a voiced frame a few frames before, no silence between) the change lies
// at the last frame of the old pitch, whose window begins before the change; out of
// silence at the foot of the level's rise.
double OnsetOf(const std::vector<PitchFrame>& frames, std::size_t first, double hopSeconds,
               double riseDb) {
    constexpr std::size_t kLegatoGap = 6, kAttackFrames = 6, kAttackSearch = 13;
    constexpr float kSilenceDb = 12;
    std::size_t attack = first;
    for (std::size_t k = first; k > 0 && first - k < kAttackSearch; --k) {
        if (frames[k].onsetStrength >= riseDb &&
            (attack == first || frames[k].onsetStrength > frames[attack].onsetStrength))
            attack = k;
        if (k < first && frames[k].hz > 0 && frames[k - 1].hz <= 0) break;
    }
    if (attack < first) return frames[attack].seconds - hopSeconds / 2;
    std::size_t prev = first;
    while (prev > 0 && first - prev <= kLegatoGap && frames[prev - 1].hz <= 0) --prev;
    if (prev > 0 && first - prev <= kLegatoGap) {
        float low = frames[prev - 1].rmsDb;
        for (std::size_t t = prev; t < first; ++t) low = std::min(low, frames[t].rmsDb);
        if (low >= frames[prev - 1].rmsDb - kSilenceDb) return frames[prev - 1].seconds;
    }
    std::size_t k = first;
    while (k > prev && first - k < kAttackFrames && frames[k - 1].rmsDb < frames[k].rmsDb) --k;
    return frames[k].seconds - hopSeconds / 2;
}

// The voiced stretches cut into note-long pieces; a piece too short to be a note that
// runs straight into the next is that note's attack.
std::vector<Span> NoteParts(const std::vector<PitchFrame>& frames, const std::vector<double>& cents,
                            double hopSeconds, const SegmenterSettings& settings) {
    const auto minLen = static_cast<std::size_t>(
        std::max(2.0, std::round(0.6 * settings.minNoteSeconds / hopSeconds)));
    std::vector<Span> parts;
    for (std::size_t t = 0; t < frames.size();) {
        if (frames[t].hz <= 0) {
            ++t;
            continue;
        }
        Span run{t, t};
        while (run.end < frames.size() && frames[run.end].hz > 0) ++run.end;
        for (const Span& level : PartitionLevels(cents, run, minLen, settings.changePenalty))
            SplitAtOnsets(frames, level, minLen, settings.onsetRiseDb, parts);
        t = run.end;
    }
    const auto shortest = static_cast<std::size_t>(settings.minNoteSeconds / hopSeconds);
    for (std::size_t i = parts.size(); i-- > 1;) {
        if (parts[i - 1].end == parts[i].begin && parts[i - 1].end - parts[i - 1].begin < shortest) {
            parts[i].begin = parts[i - 1].begin;
            parts[i].onset = parts[i - 1].onset;
            parts.erase(parts.begin() + static_cast<std::ptrdiff_t>(i - 1));
        }
    }
    return parts;
}

} // namespace

std::vector<NoteEvent> SegmentNotes(const std::vector<PitchFrame>& frames, double hopSeconds,
                                    const SegmenterSettings& settings) {
    std::vector<double> cents(frames.size(), 0);
    for (std::size_t t = 0; t < frames.size(); ++t)
        if (frames[t].hz > 0) cents[t] = 1200.0 * std::log2(frames[t].hz / 440.0);
    std::vector<NoteEvent> notes;
    std::vector<double> levels;
    std::size_t lastEnd = 0;
    for (const Span& part : NoteParts(frames, cents, hopSeconds, settings)) {
        const double level = StableCents(cents, part);
        const double onset = OnsetOf(frames, part.begin, hopSeconds, settings.onsetRiseDb);
        const double offset = frames[part.end - 1].seconds + hopSeconds / 2;
        // Neighbours at one level with no new attack between them are one note.
        const bool joined = !notes.empty() && part.begin == lastEnd &&
                            std::abs(level - levels.back()) < settings.mergeCents && !part.onset;
        lastEnd = part.end;
        if (joined) {
            notes.back().offset = offset;
            continue;
        }
        notes.push_back({onset, offset, 440.0 * std::pow(2.0, level / 1200.0)});
        levels.push_back(level);
    }
    std::erase_if(notes, [&](const NoteEvent& n) { return n.offset - n.onset < settings.minNoteSeconds; });
    return notes;
}

} // namespace tahrir::transcribe
