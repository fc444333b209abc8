#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "cli_run.h"
#include "play/wave_voices.h"

using namespace tahrir::test;

namespace {

// The Shur demo on the tar and on the daf from an empty data folder: the samples come
// from the shipped data, only they sound (no MIDI note goes out), and 10 is no instrument.
TEST(WaveCli, PlayOnTheWaveVoicesRendersTheirSamplesOnly) {
    const TempFolder folder;
    const std::string score = std::string(TAHRIR_DATA_DIR) + "/demo/shur-daramad.srv";
    for (const char* button : {"8", "9"}) {
        const auto wav = folder / (std::string(button) + ".wav");
        const auto messages = folder / "messages.txt";
        const CliRun run = RunCli(folder, {"play", score, "--instrument", button, "--wav",
                                           wav.string(), "--messages", messages.string()});
        ASSERT_EQ(run.code, 0) << run.err;
        std::istringstream lines(ReadBytes(messages));
        std::string time, word;
        int noteOns = 0;
        while (lines >> time >> word)
            noteOns += (std::stoul(word, nullptr, 16) & 0xF0) == 0x90;
        EXPECT_EQ(noteOns, 0) << button;
        tahrir::play::WaveSample sound;
        std::string error;
        ASSERT_TRUE(tahrir::play::ReadWaveSample(wav, sound, error)) << error;
        double energy = 0;
        for (float v : sound.frames)
            energy += static_cast<double>(v) * v;
        EXPECT_GT(std::sqrt(energy / static_cast<double>(sound.frames.size())), 0.01) << button;
    }
    EXPECT_EQ(RunCli(folder, {"play", score, "--instrument", "10"}).code, 1);
}

} // namespace
