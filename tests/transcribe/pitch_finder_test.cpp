// The wave loader and the pitch finder on generated tones.

#include <gtest/gtest.h>

#include <cmath>

#include "temp_folder.h"
#include "transcribe/pitch_finder.h"
#include "transcribe/wave_file.h"
#include "wave_writer.h"

namespace tahrir::transcribe {
namespace {

using test::Melody;
using test::ToneSpan;

std::vector<float> Samples(const std::vector<ToneSpan>& spans) {
    const auto bytes = test::WaveFileBytes(Melody(spans));
    return WaveSamplesOf(bytes);
}

TEST(WaveLoader, ReadsEveryByteAfterTheHeaderAndMarksAShortLoad) {
    // Bytes 0, 128 and 255 after a header of anything: -1, 0, 127/128.
    const std::string file = std::string(44, 'x') + std::string("\x00\x80\xff", 3);
    EXPECT_EQ(WaveSamplesOf(file), (std::vector<float>{-1, 0, 127.0f / 128}));
    // 45 bytes: one sample is below two, so the load is empty, as is a text or empty file.
    for (const std::string& shortFile : {std::string(45, '\x90'), std::string("text"), std::string()})
        EXPECT_EQ(WaveSamplesOf(shortFile), (std::vector<float>{-1, 0, 0, 0}));
    // A 16-bit stereo file is read byte by byte all the same; the rate is bytes 29 and 30.
    const std::string stereo = test::WaveFileBytes(std::vector<std::uint8_t>(400, 1), 44100, 2, 16);
    EXPECT_EQ(WaveSamplesOf(stereo).size(), 400u);
    EXPECT_EQ(WaveByteRate(stereo), (44100 * 4) & 0xFFFF);
}

TEST(PitchFinder, FindsTheFirstDipOfPureAndHarmonicTones) {
    // Tolerance 1 %: the first lag under the threshold, refined, without a search for the
    // minimum after it, lies a little above the true period.
    const std::pair<double, int> tones[] = {{440, 1}, {220, 1}, {196, 4}, {311.13, 3}, {622.25, 1},
                                            {452.89, 2}};
    for (const auto& [hz, harmonics] : tones) {
        const auto samples = Samples({{hz, 0.1, harmonics}});
        const double found = YinPitch(std::span(samples).first(PitchFrameSize), WaveRate);
        EXPECT_NEAR(found, hz, hz * 0.01) << hz << " Hz, " << harmonics << " partials";
        EXPECT_LE(found, hz * 1.001) << hz;
    }
    const std::vector<float> silence(PitchFrameSize, 0);
    EXPECT_EQ(YinPitch(silence, WaveRate), 0);
}

TEST(PitchFinder, WaveFileSkipsFramesWithoutAPitchAndReadsOnlyWhatItNeeds) {
    test::TempFolder folder;
    // A silent first second, then a tone: every silent frame gives 0 and the next is tried.
    const auto late = test::WaveFileBytes(Melody({{0, 1}, {330, 0.5, 3}}));
    test::WriteWaveFile(folder / "late.wav", late);
    const double fromSamples = WaveFilePitch(WaveSamplesOf(late));
    EXPECT_NEAR(fromSamples, 330, 3.3);
    EXPECT_EQ(WaveFilePitch(folder / "late.wav"), fromSamples);
    // A 15 Hz tone fills frames whose period is beyond the frame: no answer.
    EXPECT_EQ(WaveFilePitch(Samples({{15, 1}})), 0);
    // A first byte of 0 is the empty mark; 45 bytes are an empty load; no file is no answer.
    auto zeroFirst = Melody({{440, 0.5}});
    zeroFirst[0] = 0;
    test::WriteWaveFile(folder / "zero.wav", test::WaveFileBytes(zeroFirst));
    test::WriteWaveFile(folder / "short.wav", late.substr(0, 45));
    EXPECT_EQ(WaveFilePitch(folder / "zero.wav"), 0);
    EXPECT_EQ(WaveFilePitch(folder / "short.wav"), 0);
    EXPECT_FALSE(WaveFilePitch(folder / "none.wav"));
}

TEST(PitchFinder, FramePitchesFollowAMelody) {
    const auto samples = Samples({{261.63, 0.5, 3}, {0, 0.5}, {392, 0.5, 3}});
    const auto pitches = FramePitches(samples);
    ASSERT_EQ(pitches.size(), samples.size() / PitchFrameSize);
    // Within 1.5 %: three partials pull the first dip of a frame a little further out.
    EXPECT_NEAR(pitches[5], 261.63, 3.9);
    EXPECT_EQ(pitches[30], 0);
    EXPECT_NEAR(pitches[50], 392, 5.9);
}

} // namespace
} // namespace tahrir::transcribe
