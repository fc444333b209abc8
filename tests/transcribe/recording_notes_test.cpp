// From generated recordings to notes: repeated notes, legato with vibrato, pruning, the
// grids with koron and sori where the player puts them, and files of every format.

#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <sstream>

#include "case_files.h"
#include "cli_run.h"
#include "note_accuracy.h"
#include "temp_folder.h"
#include "tone_signals.h"
#include "transcribe/recording_loader.h"
#include "transcribe/recording_notes.h"

namespace tahrir::test {
namespace {

using transcribe::NotesOptions;
using transcribe::TrackerRate;

// A melody of (note, seconds) with each note re-attacked, as one signal and its truth;
// `cents` detunes a note from its equal-tempered pitch.
std::vector<float> Melody(
    const std::vector<std::pair<double, double>>& notes, ToneShape shape,
    std::vector<TruthNote>& truth, double gap,
    double (*cents)(double) = [](double) { return 0.0; }) {
    std::vector<float> x;
    for (const auto& [note, seconds] : notes) {
        truth.push_back({static_cast<double>(x.size()) / TrackerRate, note});
        shape.seconds = seconds;
        const double hz = MidiHz(note) * std::pow(2.0, cents(note) / 1200);
        AppendTone(
            x, TrackerRate, [&](double) { return hz; }, shape);
        AppendSilence(x, TrackerRate, gap);
    }
    return x;
}

// Writes mono samples to a sound file, repeated on every channel.
void WriteSound(const std::string& path, const std::vector<float>& mono, int rate, int format,
                int channels) {
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = channels;
    info.format = format;
    SNDFILE* f = sf_open(path.c_str(), SFM_WRITE, &info);
    ASSERT_NE(f, nullptr) << path << ": " << sf_strerror(nullptr);
    std::vector<float> frames;
    for (float v : mono)
        frames.insert(frames.end(), static_cast<std::size_t>(channels), v);
    sf_writef_float(f, frames.data(), static_cast<sf_count_t>(mono.size()));
    sf_close(f);
}

void ExpectAllFound(const std::vector<transcribe::RecordingNote>& found,
                    const std::vector<TruthNote>& truth, const std::string& what) {
    const Accuracy a = Score(found, truth);
    EXPECT_EQ(a.matched, a.truth) << what;
    EXPECT_EQ(a.found, a.truth) << what;
    EXPECT_EQ(a.gridMatched, a.matched) << what;
}

TEST(RecordingNotes, SplitsRepeatedNotesAndKeepsLegatoWithVibratoWhole) {
    for (const CaseRow& c : ReadCases("transcribe/recording_melodies.txt")) {
        std::vector<std::pair<double, double>> notes;
        const std::vector<double> n = c.numbers(1);
        for (std::size_t i = 0; i + 1 < n.size(); i += 2) notes.emplace_back(n[i], n[i + 1]);
        const ToneShape shape{0, c.integer(2), c.number(3), c.number(4), c.number(5)};
        std::vector<TruthNote> truth;
        const std::vector<float> x = Melody(notes, shape, truth, c.number(6));
        ExpectAllFound(transcribe::TranscribeSamples(x, TrackerRate, {}).notes, truth, c.where);
    }
}

TEST(RecordingNotes, PrunesBlipsAndSilenceGivesNothing) {
    std::vector<float> x;
    AppendSilence(x, TrackerRate, 0.5);
    AppendTone(x, TrackerRate, [](double) { return 440.0; }, {0.05, 3});
    AppendSilence(x, TrackerRate, 0.5);
    EXPECT_TRUE(transcribe::TranscribeSamples(x, TrackerRate, {}).notes.empty());
}

TEST(RecordingNotes, GridsPlaceKoronAndSoriWhereThePlayerPutsThem) {
    // Quarter tones played 40 cents from their naturals: D koron, E koron, F sori, A koron.
    const std::vector<std::pair<double, double>> notes = {
        {61.5, 0.4}, {63.5, 0.4}, {65.5, 0.4}, {67, 0.4}, {68.5, 0.4}};
    // Koron lies under the natural, so a koron 40 cents down sounds 10 cents over the
    // equal quarter tone; sori 40 cents up sounds 10 under.
    std::vector<TruthNote> truth;
    const std::vector<float> x = Melody(notes, {0, 4}, truth, 0, [](double note) {
        return note == std::floor(note) ? 0.0 : note == 65.5 ? -10.0 : 10.0;
    });
    for (const CaseRow& c : ReadCases("transcribe/recording_grids.txt")) {
        NotesOptions o;
        o.grid = transcribe::GridNamed(c[0]).value();
        o.tuning.koronCents = c.number(1);
        o.tuning.soriCents = c.number(2);
        o.mask = core::BuildScaleMask(c[3]);
        const auto found = transcribe::TranscribeSamples(x, TrackerRate, o).notes;
        std::vector<double> got;
        for (const auto& n : found)
            got.push_back(n.note);
        EXPECT_EQ(got, c.numbers(4)) << c.where;
    }
}

TEST(RecordingNotes, ReadsEveryFormatAndNamesTheFileItCannotRead) {
    TempFolder folder;
    std::vector<float> mono;
    AppendTone(mono, 48000, [](double) { return MidiHz(64.5); }, {0.8, 4});
    struct Case {
        const char* name;
        int format;
        int channels;
    };
    const Case cases[] = {
        {"a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 2},
        {"a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 1},
        {"a.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 2},
        {"a.mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 1},
    };
    for (const Case& c : cases) {
        const std::string path = (folder / c.name).string();
        WriteSound(path, mono, 48000, c.format, c.channels);
        if (HasFatalFailure()) return;
        std::string error;
        const auto t = transcribe::TranscribeRecording(path, {}, error);
        ASSERT_TRUE(t) << error;
        EXPECT_EQ(t->fileRate, 48000) << c.name;
        ASSERT_EQ(t->notes.size(), 1u) << c.name;
        EXPECT_EQ(t->notes[0].note, 64.5) << c.name;
        EXPECT_NEAR(t->notes[0].onset, 0, 0.03) << c.name;
    }
    const std::string junk = (folder / "junk.wav").string();
    WriteBytes(junk, std::string("RIFF\x10\0\0\0WAVEfmt ", 16));
    for (const std::string& bad : {junk, (folder / "missing.flac").string()}) {
        std::string error;
        EXPECT_FALSE(transcribe::TranscribeRecording(bad, {}, error));
        EXPECT_NE(error.find(bad), std::string::npos) << error;
    }
}

TEST(RecordingNotes, NotesCommandPrintsNotesJsonAndFrames) {
    TempFolder folder;
    const std::string wav = (folder / "two.wav").string();
    std::vector<float> x;
    AppendTone(x, 22050, [](double) { return MidiHz(63.5); }, {0.5, 4});
    AppendSilence(x, 22050, 0.2);
    AppendTone(x, 22050, [](double) { return MidiHz(67); }, {0.5, 4});
    WriteSound(wav, x, 22050, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1);
    ASSERT_FALSE(HasFatalFailure());

    CliRun run = RunCli(
        folder, {"notes", wav, "--koron", "-40", "--frames", (folder / "frames.txt").string()});
    ASSERT_EQ(run.code, 0) << run.err;
    std::istringstream lines(run.out);
    double onset = 0, offset = 0, hz = 0, note = 0;
    std::vector<double> notes;
    while (lines >> onset >> offset >> hz >> note)
        notes.push_back(note);
    EXPECT_EQ(notes, (std::vector<double>{63.5, 67}));
    const std::string frames = ReadBytes(folder / "frames.txt");
    EXPECT_NEAR(static_cast<double>(std::count(frames.begin(), frames.end(), '\n')), 1.2 * 86, 3);

    run = RunCli(folder, {"notes", wav, "--json", "--grid", "12"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out.rfind("{\"rate\": 22050, \"notes\": [{\"onset\": ", 0), 0u) << run.out;
    EXPECT_NE(run.out.find("\"note\": 64}"), std::string::npos) << run.out;

    EXPECT_EQ(RunCli(folder, {"notes", wav, "--grid", "36"}).code, 1);
    EXPECT_EQ(RunCli(folder, {"notes"}).code, 1);
    run = RunCli(folder, {"notes", (folder / "none.ogg").string()});
    EXPECT_EQ(run.code, 2);
    EXPECT_NE(run.err.find("none.ogg"), std::string::npos);
}

} // namespace
} // namespace tahrir::test
