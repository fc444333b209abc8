#include "midifile/microtonal_writer.h"

#include <gtest/gtest.h>

#include "smf_builder.h"

namespace tahrir::midifile {
namespace {

using test::Count;

TEST(MicrotonalWriter, ChannelPlanWithBendRangeAndStandingBends) {
    // Natural Re, koron Mi, sori Fa, each a second long, at 90 beats.
    const std::vector<EventRecord> log = {{0, 62, 3, 100}, {1, 62, 3, 0},   {0, 64, 2, 100},
                                          {1, 64, 2, 0},   {0, 65, 4, 100}, {1, 65, 4, 0}};
    const WriteResult r = WriteMicrotonalFile(log, {.tempo = 90, .program = 107});
    ASSERT_TRUE(r.ok()) << r.error;
    MidiFileInfo info;
    const auto l = test::Dump(r.bytes, &info);
    ASSERT_TRUE(info.complete());
    EXPECT_EQ(info.format, 1);
    EXPECT_EQ(info.MidiDivision, 480);
    // Raw channels 2, 3, 4 show as 3, 4, 5: bends 48, 64 and 80 times 128.
    for (const char* once :
         {"Tr1  Meta SetTempo: 666667 us/qn  (~90 BPM)", "Tr2  PitchBend ch=3 val=6144",
          "Tr2  PitchBend ch=4 val=8192", "Tr2  PitchBend ch=5 val=10240",
          "t  1.000s  Tr2  NoteOn   ch=3 key=64 vel=100",
          "t  3.000s  Tr2  NoteOff  ch=5 key=65 vel=0"})
        EXPECT_EQ(Count(l, once), 1u) << once;
    EXPECT_EQ(Count(l, "PitchBend ch=2 "), 0u);
    // A bend range of two semitones and the program on each of the five voices.
    EXPECT_EQ(Count(l, " cc#=6 val=2"), 5u);
    EXPECT_EQ(Count(l, " prog#=107"), 5u);
    EXPECT_EQ(Count(l, "ch=7"), 0u); // no count-in in this log
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
    EXPECT_EQ(Count(test::Dump(r.bytes), "Program  ch=7 prog#=115"), 1u);
    const MidiFileInfo info = test::Info(r.bytes);
    ASSERT_EQ(info.MidiTracks[1].size(), 16u);
    EXPECT_EQ(info.MidiTracks[1].back().start + info.MidiTracks[1].back().length, 48 + 30 * 160);
}

TEST(MicrotonalWriter, RefusesWhatAFileCannotHold) {
    EXPECT_FALSE(WriteMicrotonalFile({}, {.tempo = 0}).ok());
    for (const EventRecord& bad :
         {EventRecord{0, 60, 16, 90}, {0, 200, 3, 90}, {-1, 60, 3, 90}, {1e6, 60, 3, 90}})
        EXPECT_FALSE(WriteMicrotonalFile({bad}, {}).ok())
            << bad.seconds << " " << bad.key << " " << bad.channel;
    EXPECT_TRUE(WriteMicrotonalFile({{1e5, 60, 3, 90}}, {}).ok());
}

} // namespace
} // namespace tahrir::midifile
