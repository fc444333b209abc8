// The pitch tracker on generated tones, glides, silence and noise.

#include <gtest/gtest.h>

#include <algorithm>

#include "case_files.h"
#include "note_accuracy.h"
#include "tone_signals.h"
#include "transcribe/pyin_tracker.h"
#include "transcribe/recording_loader.h"
#include "transcribe/recording_notes.h"

namespace tahrir::test {
namespace {

using transcribe::PitchFrame;
using transcribe::PyinTracker;
using transcribe::TrackerRate;

struct TrackSummary {
    double voiced = 0;     // fraction of frames
    double worstCents = 0; // of the voiced frames against the expected pitch
};

// Frames in the first and last 60 ms meet the edges of the signal and are left out.
TrackSummary Summarise(const std::vector<PitchFrame>& frames,
                       const std::function<double(double)>& expected) {
    TrackSummary s;
    int inside = 0, voiced = 0;
    const double end = frames.empty() ? 0 : frames.back().seconds;
    for (const PitchFrame& f : frames) {
        if (f.seconds < 0.06 || f.seconds > end - 0.06) continue;
        ++inside;
        if (f.hz <= 0) continue;
        ++voiced;
        s.worstCents = std::max(s.worstCents, std::abs(CentsBetween(f.hz, expected(f.seconds))));
    }
    s.voiced = inside ? static_cast<double>(voiced) / inside : 0;
    return s;
}

TEST(PyinTracker, FollowsTonesOnAndBetweenTheSemitones) {
    PyinTracker tracker(TrackerRate);
    for (const CaseRow& c : ReadCases("transcribe/pyin_tones.txt")) {
        const double hz = MidiHz(c.number(0));
        const int rate = c.integer(2) ? c.integer(2) : TrackerRate;
        std::vector<float> x;
        AppendTone(x, rate, [&](double) { return hz; }, {1.0, c.integer(1)});
        if (rate != TrackerRate) x = transcribe::Resample(x, rate, TrackerRate);
        const TrackSummary s = Summarise(tracker.track(x), [&](double) { return hz; });
        EXPECT_GT(s.voiced, 0.97) << c.where;
        EXPECT_LT(s.worstCents, c.number(3)) << c.where;
    }
}

TEST(PyinTracker, FollowsGlidesAndVibratoWithoutOctaveErrors) {
    PyinTracker tracker(TrackerRate);
    const auto glide = [](double t) { return 200.0 * std::pow(2.0, t); }; // an octave a second
    std::vector<float> x;
    AppendTone(x, TrackerRate, glide, {1.0, 5});
    TrackSummary s = Summarise(tracker.track(x), glide);
    EXPECT_GT(s.voiced, 0.97);
    EXPECT_LT(s.worstCents, 15); // the frame's window spans 46 ms of the glide

    // A bright low tone: energy in the upper harmonics must not pull the track an octave.
    x.clear();
    AppendTone(x, TrackerRate, [](double) { return 98.0; }, {1.0, 12, 0.5, 0, 40});
    s = Summarise(tracker.track(x), [](double t) {
        return 98.0 * std::pow(2.0, 40 * std::sin(kTwoPi * 5.5 * t) / 1200);
    });
    EXPECT_GT(s.voiced, 0.97);
    EXPECT_LT(s.worstCents, 20);
}

TEST(PyinTracker, SilenceAndNoiseAreUnvoicedAndNoiseSparesATone) {
    PyinTracker tracker(TrackerRate);
    std::vector<float> x;
    AppendSilence(x, TrackerRate, 1.0);
    for (const PitchFrame& f : tracker.track(x)) EXPECT_EQ(f.hz, 0);

    // White noise at the level of a loud tone (WithNoise at 0 dB under a full-scale DC).
    std::vector<float> noise = WithNoise(std::vector<float>(TrackerRate, 0.3f), 0, 3);
    for (float& v : noise) v -= 0.3f;
    const TrackSummary quiet = Summarise(tracker.track(noise), [](double) { return 1.0; });
    EXPECT_LT(quiet.voiced, 0.05);

    x.clear();
    AppendTone(x, TrackerRate, [](double) { return MidiHz(66.5); }, {1.0, 4});
    const TrackSummary noisy =
        Summarise(tracker.track(WithNoise(x, 10, 5)), [](double) { return MidiHz(66.5); });
    EXPECT_GT(noisy.voiced, 0.9);
    EXPECT_LT(noisy.worstCents, 10);
}

TEST(PyinTracker, EmptyAndTinyInputs) {
    PyinTracker tracker(TrackerRate);
    EXPECT_TRUE(tracker.track({}).empty());
    const auto one = tracker.track({0.5f});
    ASSERT_EQ(one.size(), 1u);
    EXPECT_EQ(one[0].hz, 0);
}

} // namespace
} // namespace tahrir::test
