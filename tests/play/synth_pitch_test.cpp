#include <gtest/gtest.h>

#include <sndfile.h>

#include <cmath>
#include <filesystem>
#include <vector>

#include "play/player.h"
#include "play/synth_sink.h"
#include "play_test_util.h"
#include "temp_folder.h"

namespace tahrir::play {
namespace {

using testing::Note;
using testing::Rest;
using testing::Sheet;

// The left channel of a 44.1 kHz WAV file.
std::vector<float> ReadLeft(const std::filesystem::path& file) {
    SF_INFO info{};
    SNDFILE* f = sf_open(file.string().c_str(), SFM_READ, &info);
    if (!f) return {};
    EXPECT_EQ(info.samplerate, 44100);
    std::vector<float> frames(static_cast<std::size_t>(info.frames * info.channels)), left;
    sf_readf_float(f, frames.data(), info.frames);
    sf_close(f);
    for (std::size_t i = 0; i < frames.size(); i += static_cast<std::size_t>(info.channels))
        left.push_back(frames[i]);
    return left;
}

// Fundamental frequency by YIN: cumulative-mean-normalised difference, first dip below 0.1,
// refined by a parabola through its neighbours.
double YinPitch(const std::vector<float>& x, std::size_t from, std::size_t length, int rate) {
    std::vector<double> cmnd(static_cast<std::size_t>(rate / 80 + 2), 1.0);
    double running = 0;
    for (std::size_t lag = 1; lag < cmnd.size(); ++lag) {
        double d = 0;
        for (std::size_t i = from; i < from + length; ++i)
            d += std::pow(static_cast<double>(x[i]) - x[i + lag], 2);
        running += d;
        cmnd[lag] = running > 0 ? d * static_cast<double>(lag) / running : 1.0;
    }
    for (auto lag = static_cast<std::size_t>(rate / 1500); lag + 1 < cmnd.size(); ++lag) {
        if (cmnd[lag] >= 0.1) continue;
        while (lag + 2 < cmnd.size() && cmnd[lag + 1] < cmnd[lag])
            ++lag;
        const double a = cmnd[lag - 1], b = cmnd[lag], c = cmnd[lag + 1];
        return rate / (static_cast<double>(lag) + (a - c) / (2 * (a - 2 * b + c)));
    }
    return 0;
}

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
