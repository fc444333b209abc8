// tahrir-cli pitch, findnote and transcribe from outside, on generated recordings.

#include <gtest/gtest.h>

#include "cli_run.h"
#include "wave_writer.h"

namespace tahrir::test {
namespace {

TEST(TranscribeCli, PitchAndFindNote) {
    TempFolder folder;
    WriteWaveFile(folder / "a.wav", WaveFileBytes(Melody({{440, 1}})));
    CliRun run = RunCli(folder, {"pitch", (folder / "a.wav").string()});
    EXPECT_EQ(run.code, 0);
    EXPECT_NEAR(std::stod(run.out), 438.9, 1.0);
    run = RunCli(folder, {"findnote", "--period", "25", "--grid", "24"});
    EXPECT_EQ(run.out, "{\"note\": 69, \"errorNote\": 1000, \"reference\": 3.3645}\n");
    EXPECT_EQ(RunCli(folder, {"findnote", "--period", "25", "--grid", "7"}).code, 1);
}

TEST(TranscribeCli, UnreadableInputExitsTwoNamingTheFileAndBadBytesMakeNoNotes) {
    TempFolder folder;
    const std::string missing = (folder / "missing.wav").string();
    for (const char* command : {"pitch", "transcribe"}) {
        const CliRun run = RunCli(folder, {command, missing, "-o", (folder / "o.srv").string()});
        EXPECT_EQ(run.code, 2) << command;
        EXPECT_NE(run.err.find(missing), std::string::npos) << command;
    }
    // Text, 45 bytes and a header claiming 2 GB: no notes, a score all the same.
    std::string huge = WaveFileBytes(Melody({{0, 0.1}}));
    huge.replace(40, 4, "\xff\xff\xff\x7f");
    for (const std::string& bytes : {std::string("just text\n"), huge.substr(0, 45), huge}) {
        WriteWaveFile(folder / "bad.wav", bytes);
        EXPECT_EQ(RunCli(folder, {"pitch", (folder / "bad.wav").string()}).out, "0\n");
        const CliRun run = RunCli(folder, {"transcribe", (folder / "bad.wav").string(), "-o",
                                           (folder / "bad.srv").string()});
        EXPECT_EQ(run.code, 0) << run.err;
        EXPECT_TRUE(std::filesystem::exists(folder / "bad.srv"));
    }
}

TEST(TranscribeCli, AMelodyGoesIntoAScoreUnderItsSignature) {
    TempFolder folder;
    // Do, then La koron, a second each with a fifth of a second between.
    WriteWaveFile(folder / "m.wav",
                  WaveFileBytes(Melody({{261.63, 1, 3}, {0, 0.2}, {427.5, 1, 3}})));
    const std::string score = (folder / "in.srv").string();
    ASSERT_EQ(RunCli(folder, {"new", "--tempo", "60", "--rhythm", "4/4", "--measures", "1", "-o",
                              score}).code, 0);
    const std::string out = (folder / "out.srv").string();
    const auto lines = [&](const std::vector<std::string>& extra) {
        std::vector<std::string> args = {"transcribe", (folder / "m.wav").string(), "--into", score,
                                         "-o", out, "--min-duration", "4", "--notes",
                                         (folder / "notes.txt").string()};
        args.insert(args.end(), extra.begin(), extra.end());
        EXPECT_EQ(RunCli(folder, args).code, 0);
        return RunCli(folder, {"lines", out}).out;
    };
    // Exact: Do natural and La koron; under the plain signature La koron is a rest.
    std::string text = lines({"--exact"});
    EXPECT_NE(text.find("NoteLine\t13  8N"), std::string::npos) << text;
    EXPECT_NE(text.find("NoteLine\t63  8K"), std::string::npos) << text;
    text = lines({});
    EXPECT_EQ(text.find("NoteLine\t63"), std::string::npos) << text;
    EXPECT_EQ(ReadBytes(folder / "notes.txt").find("68.5"), ReadBytes(folder / "notes.txt").rfind("68.5"));
}

} // namespace
} // namespace tahrir::test
