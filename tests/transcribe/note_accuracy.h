#pragma once
// Scoring a transcription against the truth of a play run: the notes of its event log,
// and a note F-measure (onset within 50 ms, pitch within 25 cents).

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "midifile/event_log.h"
#include "transcribe/recording_notes.h"

namespace tahrir::test {

struct TruthNote {
    double onset = 0;
    double note = 0; // MIDI number with the koron or sori half step
};

// The note ons of a play run's event log: a koron (channel 2) sounds half a step under its
// key, a sori (channel 4) half a step over.
inline std::vector<TruthNote> ReadPlayLog(const std::string& path) {
    std::vector<TruthNote> notes;
    double now = 0;
    for (const core::EventRecord& r : midifile::ReadEventLog(path).records) {
        now += r.seconds;
        if (r.velocity > 0)
            notes.push_back({now, r.key + (r.channel == 2 ? -0.5 : r.channel == 4 ? 0.5 : 0.0)});
    }
    return notes;
}

struct Accuracy {
    int truth = 0, found = 0, matched = 0, gridMatched = 0;
    double fMeasure() const { return truth + found ? 2.0 * matched / (truth + found) : 1.0; }
};

// Pairs notes in time order; a pair counts when the onsets lie within 50 ms and the
// measured pitch within 25 cents of the truth. `gridMatched` counts pairs whose grid note
// equals the truth exactly.
inline Accuracy Score(const std::vector<transcribe::RecordingNote>& found,
                      const std::vector<TruthNote>& truth) {
    Accuracy a{static_cast<int>(truth.size()), static_cast<int>(found.size()), 0, 0};
    std::vector<bool> used(found.size(), false);
    for (const TruthNote& t : truth) {
        for (std::size_t i = 0; i < found.size(); ++i) {
            const double cents = 1200.0 * std::log2(found[i].hz / 440.0) - (t.note - 69) * 100.0;
            if (used[i] || std::abs(found[i].onset - t.onset) > 0.05 || std::abs(cents) > 25)
                continue;
            used[i] = true;
            ++a.matched;
            if (found[i].note == t.note) ++a.gridMatched;
            break;
        }
    }
    return a;
}

inline Accuracy& operator+=(Accuracy& a, const Accuracy& b) {
    a.truth += b.truth;
    a.found += b.found;
    a.matched += b.matched;
    a.gridMatched += b.gridMatched;
    return a;
}

// White noise at `snrDb` under the signal's mean power.
inline std::vector<float> WithNoise(std::vector<float> x, double snrDb, unsigned seed) {
    double power = 0;
    for (float v : x)
        power += static_cast<double>(v) * v;
    power /= std::max<std::size_t>(1, x.size());
    std::mt19937 rng(seed);
    std::normal_distribution<float> noise(
        0.0f, static_cast<float>(std::sqrt(power / std::pow(10.0, snrDb / 10))));
    for (float& v : x)
        v += noise(rng);
    return x;
}

} // namespace tahrir::test
