// The three passes: markers on generated tones, steady runs, cleaning and snapping.

#include <gtest/gtest.h>

#include <cmath>

#include "temp_folder.h"
#include "transcribe/note_passes.h"
#include "wave_writer.h"

namespace tahrir::transcribe {
namespace {

using test::Melody;
using test::ToneSpan;

std::string Wave(const std::vector<ToneSpan>& spans) { return test::WaveFileBytes(Melody(spans)); }

PassOptions WithMethod(Detector d) {
    PassOptions o;
    o.Method = d;
    return o;
}

TEST(Markers, OneMarkerAPeriodOnACleanToneForBothDetectors) {
    // One second of each tone: as many markers as periods, give or take the two ends.
    const std::pair<double, int> tones[] = {{220, 1}, {440, 1}, {196, 3}, {330, 2}};
    for (const auto& [hz, harmonics] : tones) {
        const std::string wave = Wave({{hz, 1.0, harmonics}});
        for (Detector d : {Detector::Simple, Detector::Women}) {
            const auto markers = FindMarkers(wave, FirstWorkPosition,
                                             static_cast<std::int64_t>(wave.size()), WithMethod(d), nullptr);
            EXPECT_NEAR(static_cast<double>(markers.size()), hz, 3)
                << hz << " Hz, detector " << static_cast<int>(d);
        }
    }
    const std::string wave = Wave({{440, 1.0}});
    EXPECT_TRUE(FindMarkers(wave, 50, 11044, WithMethod(Detector::Men), nullptr).empty());
    EXPECT_TRUE(FindMarkers(Wave({{0, 1.0}}), 50, 11044, PassOptions{}, nullptr).empty());
}

// Markers `gap` apart, each with its distances to the nine before it.
std::vector<MarkerRecord> EvenMarkers(int count, std::int64_t gap) {
    std::vector<MarkerRecord> markers;
    for (int i = 0; i < count; ++i) {
        MarkerRecord m{1000 + gap * i, {}};
        for (std::size_t j = 0; j < 9; ++j) m.distance[j] = gap * static_cast<std::int64_t>(j + 1);
        markers.push_back(m);
    }
    return markers;
}

TEST(SteadyRuns, ANoteNeedsMoreThanFifteenSteadyPeriods) {
    double first = 0;
    PassOptions o;
    o.k = 4; // the period is measured over four markers: P = 100, mean / k = 25
    EXPECT_TRUE(SteadyRuns(EvenMarkers(15, 25), o, 11000, first).empty());
    const auto notes = SteadyRuns(EvenMarkers(16, 25), o, 11000, first);
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(notes[0].start, 975); // the marker before the first one of the run
    EXPECT_EQ(notes[0].end, 1000 + 25 * 15);
    EXPECT_DOUBLE_EQ(notes[0].frequency, 440);
    EXPECT_EQ(notes[0].note, 69);
    EXPECT_EQ(first, 975);
}

TEST(CleanNotes, MergesShortNotesOfOnePitchAndSnapsToTheGrid) {
    const double g = 100;
    // A short first note of the same pitch as the next lends it its start; one of another
    // pitch just goes.
    auto cleaned = CleanNotes({{0, 50, 440, 69}, {60, 300, 440, 69}}, g, 0);
    ASSERT_EQ(cleaned.size(), 1u);
    EXPECT_EQ(cleaned[0].start, 0);
    cleaned = CleanNotes({{0, 50, 440, 60}, {60, 300, 440, 70}}, g, 0);
    ASSERT_EQ(cleaned.size(), 1u);
    EXPECT_EQ(cleaned[0].start, 100); // 60 snapped to the grid
    // Two short notes of one pitch merge across a gap below g; a gap of exactly g keeps
    // them apart. Ends snap to whole grid lengths, at least one.
    cleaned = CleanNotes({{0, 500, 1, 64}, {520, 560, 1, 65}, {599, 630, 1, 65}}, g, 0);
    ASSERT_EQ(cleaned.size(), 2u);
    EXPECT_EQ(cleaned[1].start, 500);
    EXPECT_EQ(cleaned[1].end, 600);
    cleaned = CleanNotes({{0, 500, 1, 64}, {520, 560, 1, 65}, {660, 690, 1, 65}}, g, 0);
    EXPECT_EQ(cleaned.size(), 3u);
    // Only the first 400 notes are kept; the shift moves every time first.
    std::vector<NoteRecord> many;
    for (int i = 0; i < 450; ++i) many.push_back({1000.0 + 300 * i, 1200.0 + 300 * i, 1, 60.0 + i % 2});
    cleaned = CleanNotes(many, g, 1000);
    ASSERT_EQ(cleaned.size(), 400u);
    EXPECT_EQ(cleaned[0].start, 0);
    EXPECT_EQ(cleaned[399].end, 300 * 399 + 200);
}

TEST(Passes, AMelodyWithQuarterTonesAndSilencesBecomesItsNotes) {
    test::TempFolder folder;
    // Do, silence, La sori, silence, Re: each a second, a fifth of a second apart.
    const std::string wave = Wave({{0, 0.3}, {261.63, 1, 3}, {0, 0.2}, {452.89, 1, 2},
                                   {0, 0.2}, {293.66, 1, 3}});
    PassOptions o;
    o.tempo = 60;
    o.MinDuration = 2; // grid: 60 × 2 × 11000 / (8 × 60) = 2750 samples
    const PassResult r = RunPasses(wave, o, folder.path());
    EXPECT_EQ(r.rate, 11000);
    ASSERT_TRUE(r.cleaned);
    std::vector<double> notes;
    for (const NoteRecord& n : *r.cleaned) notes.push_back(n.note);
    EXPECT_EQ(notes, (std::vector<double>{60, 69.5, 62}));
    // Onsets at 0.3 s, 1.5 s, 2.7 s (file positions 44 on), within one grid step.
    const double onsets[] = {3300, 16500, 29700};
    for (std::size_t i = 0; i < notes.size(); ++i)
        EXPECT_NEAR((*r.cleaned)[i].start, onsets[i] + 44, 2750) << i;
    // The insertion reads the scratch files back as they were written.
    EXPECT_EQ(ReadNoteRecords(folder / "tmp3")->size(), 3u);
    EXPECT_EQ(ReadNoteRecords(folder / "tmp2")->size(), r.raw.size());
    for (const char* name : {"tmp1", "tmp5"}) EXPECT_TRUE(std::filesystem::exists(folder / name));
}

TEST(Passes, SilenceAndGarbageMakeNoNotes) {
    test::TempFolder folder;
    for (const std::string& wave : {Wave({{0, 2}}), std::string(45, 'x'), std::string("RIFF"),
                                    std::string(5000, '\xff')}) {
        const PassResult r = RunPasses(wave, PassOptions{}, folder.path());
        EXPECT_TRUE(r.raw.empty());
        EXPECT_FALSE(r.cleaned);
        EXPECT_TRUE(ReadNoteRecords(folder / "tmp2")->empty());
    }
}

} // namespace
} // namespace tahrir::transcribe
