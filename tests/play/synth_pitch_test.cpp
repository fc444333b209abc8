#include <gtest/gtest.h>

#include <sndfile.h>

#include <cmath>
#include <filesystem>
#include <vector>

#include "play/player.h"
#include "play/synth_sink.h"
#include "play_test_util.h"
#include "wav_measure.h"
#include "temp_folder.h"

namespace tahrir::play {
namespace {

using testing::Note;
using testing::Rest;
using testing::Sheet;
using testing::ReadLeft;
using testing::YinPitch;

double Cents(double f, double reference) {
    return 1200 * std::log2(f / reference);
}

// La natural, koron and sori, one second each with a rest between, at tempo 60, rendered
// to `wav`; returns the three measured frequencies.
std::vector<double> RenderLa(const std::filesystem::path& wav, int soriBend) {
    std::string error;
    auto synth = SynthSink::openOffline(DefaultSoundFont(), wav, error);
    EXPECT_TRUE(synth) << error;
    if (!synth) return {};
    {
        Player player(synth.get());
        player.startUp();
        player.controls().UserTempo = 60;
        player.setSoriBend(soriBend);
        const auto sheet = Sheet(
            "", 60, "4/4",
            {Note(6, 3, 8), Rest(4), Note(6, 3, 8, 'K'), Rest(4), Note(6, 3, 8, 'S'), Rest(4)});
        player.playVirtual(sheet, {});
    }
    EXPECT_TRUE(synth->finish(0.5));
    const auto samples = ReadLeft(wav);
    std::vector<double> pitches;
    for (int i = 0; i < 3; ++i) {
        // 0.1 s from 0.35 s into each note; the notes start every 1.5 s.
        const auto from = static_cast<std::size_t>((i * 1.5 + 0.35) * 44100);
        if (from + 4410 + 2000 > samples.size()) return {};
        pitches.push_back(YinPitch(samples, from, 4410, 44100));
    }
    return pitches;
}

TEST(SynthPitch, KoronAndSoriSoundAQuarterToneFromTheNaturalUnlessTheSliderIsZero) {
    const ::tahrir::test::TempFolder dir;
    for (const auto& [soriBend, soriCents] : {std::pair{DefaultSoriBend, 50}, {0, 0}}) {
        const auto f = RenderLa(dir / "la.wav", soriBend);
        ASSERT_EQ(f.size(), 3u) << soriBend;
        EXPECT_NEAR(f[0], 440.0, 440.0 * 0.006); // La of octave 3 is key 69
        EXPECT_NEAR(Cents(f[1], f[0]), -50, 10) << soriBend;
        EXPECT_NEAR(Cents(f[2], f[0]), soriCents, 10) << soriBend;
    }
}

TEST(SynthSink, MissingSoundFontOrFolderIsAClearError) {
    std::string error;
    EXPECT_FALSE(SynthSink::openOffline("/nonexistent/none.sf2", "/tmp/x.wav", error));
    EXPECT_NE(error.find("SoundFont"), std::string::npos);
    EXPECT_FALSE(SynthSink::openOffline(DefaultSoundFont(), "/nonexistent/dir/x.wav", error));
    EXPECT_NE(error.find("cannot write"), std::string::npos);
}

} // namespace
} // namespace tahrir::play
