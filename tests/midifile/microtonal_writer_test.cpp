#include "midifile/microtonal_writer.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "midifile/midi_reader.h"

namespace tahrir::midifile {
namespace {

bool Has(const std::vector<std::string>& lines, const std::string& text) {
    return std::any_of(lines.begin(), lines.end(),
                       [&](const std::string& l) { return l.find(text) != std::string::npos; });
}

TEST(MicrotonalWriter, ChannelPlanWithBendRangeAndStandingBends) {
    // Natural Re, koron Mi, sori Fa, each a second long, at 90 beats.
    const std::vector<EventRecord> log = {{0, 62, 3, 100}, {1, 62, 3, 0}, {0, 64, 2, 100},
                                          {1, 64, 2, 0},   {0, 65, 4, 100}, {1, 65, 4, 0}};
    MicrotonalPlan plan;
    plan.tempo = 90;
    plan.program = 107;
    const WriteResult r = WriteMicrotonalFile(log, plan);
    ASSERT_TRUE(r.ok()) << r.error;
    DumpList dump;
    const MidiFileInfo info = ReadMidiBytes(r.bytes, dump);
    ASSERT_TRUE(info.complete());
    EXPECT_EQ(info.format, 1);
    EXPECT_EQ(info.MidiDivision, 480);
    const auto& l = dump.lines;
    EXPECT_TRUE(Has(l, "Tr1  Meta SetTempo: 666667 us/qn  (~90 BPM)"));
    // Raw channels 2, 3, 4 show as 3, 4, 5: bends 48, 64 and 80 times 128.
    EXPECT_TRUE(Has(l, "Tr2  PitchBend ch=3 val=6144"));
    EXPECT_TRUE(Has(l, "Tr2  PitchBend ch=4 val=8192"));
    EXPECT_TRUE(Has(l, "Tr2  PitchBend ch=5 val=10240"));
    EXPECT_FALSE(Has(l, "PitchBend ch=2 "));
    for (int ch = 2; ch <= 6; ++ch) {
        const std::string c = "ch=" + std::to_string(ch);
        EXPECT_TRUE(Has(l, "CC       " + c + " cc#=101 val=0")) << ch;
        EXPECT_TRUE(Has(l, "CC       " + c + " cc#=6 val=2")) << ch;
        EXPECT_TRUE(Has(l, "CC       " + c + " cc#=101 val=127")) << ch;
        EXPECT_TRUE(Has(l, "Program  " + c + " prog#=107")) << ch;
    }
    EXPECT_FALSE(Has(l, "ch=7")); // no count-in in this log
    EXPECT_TRUE(Has(l, "t  1.000s  Tr2  NoteOn   ch=3 key=64 vel=100"));
    EXPECT_TRUE(Has(l, "t  3.000s  Tr2  NoteOff  ch=5 key=65 vel=0"));
    ASSERT_EQ(info.MidiTracks[1].size(), 3u);
    EXPECT_EQ(info.MidiTracks[1][1].length, 720); // a second at 90 is 1.5 quarters
}

TEST(MicrotonalWriter, CountInAndRoundingWithoutDrift) {
    // Thirty records a third of a second apart: 160 ticks at 60 each, with no drift.
    std::vector<EventRecord> log = {{0, 76, CountInChannel, 100}, {0.1, 76, CountInChannel, 0}};
    for (int i = 0; i < 30; ++i) log.push_back({1.0 / 3, 60, 3, i % 2 ? 0 : 90});
    const WriteResult r = WriteMicrotonalFile(log, {});
    ASSERT_TRUE(r.ok());
    DumpList dump;
    const MidiFileInfo info = ReadMidiBytes(r.bytes, dump);
    EXPECT_TRUE(Has(dump.lines, "Program  ch=7 prog#=115"));
    ASSERT_EQ(info.MidiTracks[1].size(), 16u);
    EXPECT_EQ(info.MidiTracks[1].back().start + info.MidiTracks[1].back().length, 48 + 30 * 160);
}

TEST(MicrotonalWriter, RefusesWhatAFileCannotHold) {
    EXPECT_FALSE(WriteMicrotonalFile({}, {.tempo = 0}).ok());
    EXPECT_FALSE(WriteMicrotonalFile({{0, 60, 16, 90}}, {}).ok());
    EXPECT_FALSE(WriteMicrotonalFile({{0, 200, 3, 90}}, {}).ok());
    EXPECT_FALSE(WriteMicrotonalFile({{-1, 60, 3, 90}}, {}).ok());
    EXPECT_TRUE(WriteMicrotonalFile({{1e5, 60, 3, 90}}, {}).ok());
    EXPECT_FALSE(WriteMicrotonalFile({{1e6, 60, 3, 90}}, {}).ok());
    Bytes out;
    EXPECT_TRUE(AppendVlq(out, 0x0FFFFFFF));
    EXPECT_EQ(out, (Bytes{0xFF, 0xFF, 0xFF, 0x7F}));
    EXPECT_FALSE(AppendVlq(out, 0x10000000));
}

} // namespace
} // namespace tahrir::midifile
