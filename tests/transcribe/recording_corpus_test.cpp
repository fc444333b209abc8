// The transcriber on scores rendered by the program's own synthesiser: melodies with koron
// and sori in several dastgahs, legato and detached, on plucked, bowed, wind and keyboard
// instruments, clean and under noise at 20 dB SNR. The truth is the play run's event log.
// TAHRIR_FULL_CORPUS=1 runs every melody on every instrument and prints the figures.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "cli_run.h"
#include "note_accuracy.h"
#include "transcribe/recording_loader.h"

namespace tahrir::test {
namespace {

using transcribe::NotesOptions;

const char* const kMelodies[] = {"shur", "segah", "chahargah", "homayoun", "esfahan", "dashti"};
// Instrument buttons: 0 koto (plucked), 3 piano (keyboard), 5 viola (bowed), 6 flute and
// 7 oboe (wind).
const int kInstruments[] = {0, 3, 5, 6, 7};

struct Render {
    std::vector<float> samples;
    int rate = 0;
    std::vector<TruthNote> truth;
};

Render RenderScore(const TempFolder& folder, const std::string& score, int instrument) {
    const std::string wav = (folder / "out.wav").string(), log = (folder / "out.log").string();
    const CliRun run = RunCli(folder, {"play", score, "--wav", wav, "--log", log,
                                       "--instrument", std::to_string(instrument)});
    EXPECT_EQ(run.code, 0) << run.err;
    std::string error;
    const auto rec = transcribe::LoadRecording(wav, transcribe::TrackerRate, error);
    EXPECT_TRUE(rec) << error;
    if (!rec) return {};
    return {rec->samples, rec->rate, ReadPlayLog(log)};
}

Accuracy Transcribe(const Render& r, const std::vector<float>& samples) {
    NotesOptions options; // the 24 grid, koron and sori at 50 cents as the synthesiser plays
    return Score(transcribe::TranscribeSamples(samples, r.rate, options).notes, r.truth);
}

std::string Case(const char* melody, bool legato) {
    return std::string(TAHRIR_TEST_DATA) + "/transcribe/" + melody +
           (legato ? "-legato.srv" : "-detached.srv");
}

TEST(RecordingCorpus, FindsTheNotesOfRenderedMelodies) {
    const bool full = std::getenv("TAHRIR_FULL_CORPUS") != nullptr;
    TempFolder folder;
    Accuracy clean, noisy;
    int index = 0;
    for (const char* melody : kMelodies) {
        for (bool legato : {true, false}) {
            for (int instrument : kInstruments) {
                // The quick run takes each melody once, legato and detached in turn, turning
                // through the instruments.
                if (!full && (legato != (index % 2 == 0) || instrument != kInstruments[index % 5]))
                    continue;
                const Render r = RenderScore(folder, Case(melody, legato), instrument);
                const Accuracy c = Transcribe(r, r.samples);
                const Accuracy n = Transcribe(r, WithNoise(r.samples, 20, 7));
                clean += c;
                noisy += n;
                if (full)
                    std::printf("%-10s %-8s instrument %d: F %.3f clean, %.3f noisy\n", melody,
                                legato ? "legato" : "detached", instrument, c.fMeasure(),
                                n.fMeasure());
            }
        }
        ++index;
    }
    std::printf("corpus: F %.3f clean, %.3f at 20 dB SNR; grid notes exact %d of %d\n",
                clean.fMeasure(), noisy.fMeasure(), clean.gridMatched, clean.matched);
    // Floors a little under what the quick run reaches; the full corpus is quoted in the
    // README.
    EXPECT_GE(clean.fMeasure(), 0.86);
    EXPECT_GE(noisy.fMeasure(), 0.86);
    EXPECT_EQ(clean.gridMatched, clean.matched);
}

// Score -> WAV -> transcribe into a new score -> WAV: the second play run sounds the
// pitches of the first, note for note.
TEST(RecordingCorpus, RoundTripThroughTheSheetKeepsThePitches) {
    TempFolder folder;
    const std::string wav = (folder / "first.wav").string();
    const std::string score = (folder / "back.srv").string();
    const std::string first = (folder / "first.log").string(), second = (folder / "second.log").string();
    ASSERT_EQ(RunCli(folder, {"play", Case("segah", false), "--wav", wav, "--log", first,
                              "--instrument", "3"}).code, 0);
    const CliRun t = RunCli(folder, {"transcribe", wav, "--tracker", "modern", "-o", score,
                                     "--tempo", "80", "--exact"});
    ASSERT_EQ(t.code, 0) << t.err;
    ASSERT_EQ(RunCli(folder, {"play", score, "--log", second}).code, 0);
    std::vector<double> played, replayed;
    for (const TruthNote& n : ReadPlayLog(first)) played.push_back(n.note);
    for (const TruthNote& n : ReadPlayLog(second)) replayed.push_back(n.note);
    EXPECT_EQ(replayed, played);
}

} // namespace
} // namespace tahrir::test
