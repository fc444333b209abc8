#include "midifile/microtonal_writer.h"

#include <gtest/gtest.h>

#include "golden_text.h"
#include "smf_builder.h"

namespace tahrir::midifile {
namespace {

TEST(MicrotonalWriter, ChannelPlanWithBendRangeAndStandingBends) {
    // Natural Re, koron Mi, sori Fa, each a second long, at 90 beats.
    const std::vector<EventRecord> log = {{0, 62, 3, 100}, {1, 62, 3, 0},   {0, 64, 2, 100},
                                          {1, 64, 2, 0},   {0, 65, 4, 100}, {1, 65, 4, 0}};
    const WriteResult r = WriteMicrotonalFile(log, {.tempo = 90, .program = 107});
    ASSERT_TRUE(r.ok()) << r.error;
    // The dump pins the tempo, the bends of raw channels 2, 3, 4 (shown as 3, 4, 5) of 48,
    // 64 and 80 times 128, a bend range of two semitones and the program on each of the
    // five voices, and no count-in, which this log has not.
    MidiFileInfo info;
    std::string dump;
    for (const std::string& line : test::Dump(r.bytes, &info))
        dump += line + "\n";
    const std::string golden = std::string(TAHRIR_TEST_DATA) + "/midifile/microtonal_plan.dump";
    ::tahrir::test::ExpectGoldenText(golden, dump);
    ASSERT_TRUE(info.complete());
    // A second at 90 is 1.5 quarters.
    EXPECT_EQ(test::Notes(info.MidiTracks[1]),
              (test::NoteList{{62, 0, 720}, {64, 720, 720}, {65, 1440, 720}}));
}

TEST(MicrotonalWriter, CountInAndRoundingWithoutDrift) {
    // Thirty records a third of a second apart: 160 ticks at 60 each, with no drift.
    std::vector<EventRecord> log = {{0, 76, CountInChannel, 100}, {0.1, 76, CountInChannel, 0}};
    for (int i = 0; i < 30; ++i)
        log.push_back({1.0 / 3, 60, 3, i % 2 ? 0 : 90});
    const WriteResult r = WriteMicrotonalFile(log, {});
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(test::Count(test::Dump(r.bytes), "Program  ch=7 prog#=115"), 1u);
    const MidiFileInfo info = test::Info(r.bytes);
    ASSERT_EQ(info.MidiTracks[1].size(), 16u);
    EXPECT_EQ(info.MidiTracks[1].back().start + info.MidiTracks[1].back().length, 48 + 30 * 160);
}

TEST(MicrotonalWriter, RefusesWhatAFileCannotHold) {
    // The records a file cannot hold are cases of conversions.txt.
    EXPECT_FALSE(WriteMicrotonalFile({}, {.tempo = 0}).ok());
}

} // namespace
} // namespace tahrir::midifile
