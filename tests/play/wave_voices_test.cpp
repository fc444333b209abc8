#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <thread>
#include <vector>

#include "play/player.h"
#include "play/synth_sink.h"
#include "play/wave_voices.h"
#include "play_test_util.h"
#include "temp_folder.h"
#include "wav_measure.h"
#include "wave_writer.h"

// Counts allocations made by a thread while it is marked, to prove the audio side of the
// wave voices never allocates. Every new and delete of the binary then goes to malloc and
// free, which the compiler cannot see through.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
namespace {
thread_local bool t_counting = false;
std::atomic<int> g_allocations{0};
} // namespace

void* operator new(std::size_t size) {
    if (t_counting) ++g_allocations;
    if (void* p = std::malloc(size ? size : 1)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}

namespace tahrir::play {
namespace {

using testing::Note;
using testing::ReadLeft;
using testing::Sheet;
using testing::YinPitch;

constexpr int kRate = 44100;

std::vector<WaveCommand> Commands(const RecordingSink& sink) {
    std::vector<WaveCommand> out;
    for (const auto& w : sink.waves())
        out.push_back(w.command);
    return out;
}

// The wave commands a MIDI note on sends with the tar and the daf chosen.
std::vector<WaveCommand> WavesOfNoteOn(int note, int channel, bool countIn = false) {
    RecordingSink sink;
    MidiOut midi(&sink);
    midi.toggleTar();
    midi.toggleDaf();
    sink.clear();
    midi.CountInActive = countIn;
    midi.MidiNoteOn(note, 60, channel);
    return Commands(sink);
}

TEST(WaveIndex, GridEdgesTarOffsetAndGates) {
    // Index (note - 48) * 2 + 5 + (channel - 3); the tar's sample is index - 28.
    struct Row {
        int note, channel;
        int tarSlot, dafIndex; // 0: silent
    };
    const Row rows[] = {
        {48, 3, 0, 5},   {48, 2, 0, 4},   {48, 4, 0, 6},  // koron below, sori above
        {46, 3, 0, 1},   {46, 2, 0, 0},   {45, 3, 0, 0},  // index 1 sounds, 0 and -1 do not
        {60, 2, 0, 28},  {60, 3, 1, 29},  {60, 4, 2, 30}, // the tar starts at middle C
        {81, 4, 44, 72}, {82, 2, 44, 72}, {82, 3, 0, 0},  // 72 is the last, 73 is silent
    };
    for (const Row& r : rows) {
        std::vector<WaveCommand> expected;
        if (r.tarSlot) expected.push_back({WaveBank::Tar, WaveAction::Play, r.tarSlot});
        if (r.dafIndex) expected.push_back({WaveBank::Daf, WaveAction::Play, r.dafIndex});
        EXPECT_EQ(WavesOfNoteOn(r.note, r.channel), expected) << r.note << " on " << r.channel;
    }
    EXPECT_TRUE(WavesOfNoteOn(60, 3, true).empty()); // the count-in never sounds a sample

    // A note off stops only what was started; a click on the tar stops all its voices;
    // with only a wave voice chosen no MIDI note goes out.
    RecordingSink sink;
    MidiOut midi(&sink);
    midi.toggleTar();
    midi.MidiNoteOn(62, 60, 3);
    midi.MidiNoteOff(62, 3);
    midi.MidiNoteOff(64, 3);
    midi.toggleTar();
    EXPECT_EQ(Commands(sink), (std::vector<WaveCommand>{{WaveBank::Tar, WaveAction::StopAll, 0},
                                                        {WaveBank::Tar, WaveAction::Play, 5},
                                                        {WaveBank::Tar, WaveAction::Stop, 5},
                                                        {WaveBank::Tar, WaveAction::StopAll, 0}}));
    EXPECT_TRUE(sink.entries().empty());
}

// Renders `sheet` offline with only the wave voice of `button` (8 or 9), no MIDI sound.
std::vector<float> RenderWaveVoice(const core::ScoreSheet& sheet, int button, int tempo,
                                   const std::filesystem::path& wav) {
    WaveVoices voices(kRate);
    EXPECT_GT(voices.loadSamples(TAHRIR_DATA_DIR, {}), 100)
        << "samples missing in " TAHRIR_DATA_DIR;
    std::string error;
    auto sink = SynthSink::openOffline({}, wav, error, kRate);
    EXPECT_TRUE(sink) << error;
    if (!sink) return {};
    sink->attachVoices(&voices);
    {
        Player player(sink.get());
        player.startUp(-1);
        button == 8 ? player.clickTar() : player.clickDaf();
        player.controls().UserTempo = tempo;
        player.playVirtual(sheet, {});
    }
    EXPECT_TRUE(sink->finish(0.5));
    return ReadLeft(wav);
}

// The first sample within 40 ms of `expected` that reaches half the window's peak: the
// attack of a pluck or a stroke stands far above what still rings of the note before.
double OnsetNear(const std::vector<float>& x, double expected) {
    const auto from = static_cast<std::size_t>(std::max(0.0, expected - 0.04) * kRate);
    const auto to = std::min(x.size(), static_cast<std::size_t>((expected + 0.04) * kRate));
    float peak = 0;
    for (std::size_t i = from; i < to; ++i)
        peak = std::max(peak, std::fabs(x[i]));
    for (std::size_t i = from; i < to; ++i)
        if (std::fabs(x[i]) >= peak / 2) return static_cast<double>(i) / kRate;
    return -1;
}

TEST(WaveVoiceRendering, TarQuarterToneScaleIsInTuneAndOnTime) {
    const ::tahrir::test::TempFolder dir;
    // Do of octave 3 (key 60) up by quarter tones to Fa, an 8th each at tempo 60; the
    // naturals are written, as a koron holds to the end of the measure.
    const char accidentals[] = {' ', 'S', 'K', 'N', 'S', 'K', 'N', ' '};
    const int steps[] = {1, 1, 2, 2, 2, 3, 3, 4};
    const double pitches[] = {60, 60.5, 61.5, 62, 62.5, 63.5, 64, 65};
    core::ScoreSheet sheet = Sheet("", 60, "4/4", {});
    for (int i = 0; i < 8; ++i)
        sheet.setLine(4 + i, Note(steps[i], 3, 4, accidentals[i]));
    sheet.LastLine = 11;
    const auto x = RenderWaveVoice(sheet, 8, 60, dir / "tar.wav");
    ASSERT_GT(x.size(), static_cast<std::size_t>(4 * kRate));
    for (int i = 0; i < 8; ++i) {
        const double start = i * 0.5; // an 8th at tempo 60
        EXPECT_NEAR(OnsetNear(x, start), start, 0.005) << "note " << i;
        const double hz =
            YinPitch(x, static_cast<std::size_t>((start + 0.15) * kRate), 4410, kRate);
        const double expected = 440 * std::pow(2.0, (pitches[i] - 69) / 12);
        EXPECT_NEAR(1200 * std::log2(hz / expected), 0, 5) << "note " << i << " at " << hz;
    }
}

TEST(WaveVoiceRendering, DafStrokesFollowTheRhythm) {
    const ::tahrir::test::TempFolder dir;
    // 8th, two 16ths, a dotted 8th with its 16th, a quarter, at tempo 90: a 32nd is
    // 60 / (8 * 90) s.
    const int durations[] = {4, 2, 2, 6, 2, 8};
    std::initializer_list<std::string> music = {Note(6, 2, 4), Note(6, 2, 2), Note(6, 2, 2),
                                                Note(1, 3, 6), Note(6, 2, 2), Note(6, 2, 8)};
    const auto x = RenderWaveVoice(Sheet("", 90, "4/4", music), 9, 90, dir / "daf.wav");
    double at = 0;
    for (int d : durations) {
        EXPECT_NEAR(OnsetNear(x, at), at, 0.005) << "stroke at " << at;
        at += d * 60.0 / (8 * 90);
    }
}

TEST(Accompaniment, FileBesideTheScoreSoundsFromItsPositionWithoutAllocating) {
    const ::tahrir::test::TempFolder dir;
    // A recording at 16 kHz, silent but for a click at 5 s.
    std::vector<std::uint8_t> recording(16000 * 6, 128);
    recording[16000 * 5] = 255;
    ::tahrir::test::WriteWaveFile(dir / "my song-T72.Wav",
                                  ::tahrir::test::WaveFileBytes(recording, 16000));
    EXPECT_EQ(AccompanimentFile(dir / "My Song.srv", 72), dir / "my song-T72.Wav");
    EXPECT_EQ(AccompanimentFile(dir / "My Song.srv", 80), std::filesystem::path());

    WaveVoices voices(kRate);
    voices.loadSamples(TAHRIR_DATA_DIR, {});
    std::string error;
    ASSERT_TRUE(voices.loadAccompaniment(dir / "my song-T72.Wav", error)) << error;
    // Commands come from another thread while the audio side mixes in blocks of 64.
    std::thread control([&] {
        voices.post({WaveBank::Accompaniment, WaveAction::Seek, 4990});
        voices.post({WaveBank::Accompaniment, WaveAction::Resume, 0});
        for (int n = 1; n <= 72; ++n)
            voices.post({WaveBank::Tar, WaveAction::Play, n});
        voices.post({WaveBank::Tar, WaveAction::StopAll, 0});
    });
    control.join();
    std::vector<float> left(kRate, 0.0f), right(kRate, 0.0f);
    t_counting = true;
    for (int at = 0; at < kRate; at += 64)
        voices.mix(left.data() + at, right.data() + at, std::min(64, kRate - at), 1);
    t_counting = false;
    EXPECT_EQ(g_allocations.load(), 0);
    EXPECT_GE(voices.accompanimentPosition(), 5900);

    // The click lies 10 ms after the start; the tar voices have faded within 5 ms.
    float tail = 0;
    for (std::size_t i = kRate / 100 + 100; i < left.size(); ++i)
        tail = std::max(tail, std::fabs(left[i]));
    EXPECT_EQ(tail, 0.0f);
    const auto click = std::max_element(left.begin() + kRate / 200, left.begin() + kRate / 50);
    EXPECT_NEAR(static_cast<double>(click - left.begin()) / kRate, 0.010, 0.0002);
}

} // namespace
} // namespace tahrir::play
