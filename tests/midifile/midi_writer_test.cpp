#include "midifile/midi_writer.h"

#include <gtest/gtest.h>

#include <fstream>

#include "midifile/midi_import.h"
#include "smf_builder.h"
#include "temp_folder.h"

namespace tahrir::midifile {
namespace {

using ::tahrir::test::ReadByteVector;

TEST(MidiWriter, TempoLengthForms) {
    // The tempo event starts at byte 36; its form runs from the length byte on, up to the
    // time signature's delta.
    const std::pair<double, Bytes> cases[] = {
        {60, {3, 0x0F, 0x42, 0x40}},   // 1000000
        {915, {3, 0x01, 0x00, 0x25}},  // 65573: still three bytes
        {916, {2, 0xFF, 0xDE, 161}},   // 65502: two bytes and the filler
        {72.5, {3, 0x0C, 0xA0, 0xC2}}, // 827586.2 keeps its integer part, 827586
        {300000, {1, 200}},            // one byte
    };
    for (const auto& [tempo, form] : cases) {
        const WriteResult r = WriteMidiFile({}, tempo);
        ASSERT_TRUE(r.ok()) << tempo;
        Bytes expected = {0x00, 0xFF, 0x51}; // then the form, then the time signature
        expected.insert(expected.end(), form.begin(), form.end());
        expected.insert(expected.end(), {0x00, 0xFF, 0x58});
        EXPECT_EQ(Bytes(r.bytes.begin() + 36,
                        r.bytes.begin() + 36 + static_cast<std::ptrdiff_t>(expected.size())),
                  expected)
            << tempo;
    }
    for (double bad : {0.0, -5.0, 3.0}) // 3 beats: 20000000 us does not fit three bytes
        EXPECT_FALSE(WriteMidiFile({}, bad).ok()) << bad;
}

TEST(MidiWriter, DeltaFormsOverflowAndTicksFromSeconds) {
    // The play log's file holds three bytes at most, the microtonal file four.
    const std::pair<long long, Bytes> cases[] = {{0, {0}},
                                                 {127, {0x7F}},
                                                 {128, {0x81, 0x00}},
                                                 {16383, {0xFF, 0x7F}},
                                                 {16384, {0x81, 0x80, 0x00}},
                                                 {2097151, {0xFF, 0xFF, 0x7F}},
                                                 {2097152, {0x81, 0x80, 0x80, 0x00}},
                                                 {0x0FFFFFFF, {0xFF, 0xFF, 0xFF, 0x7F}},
                                                 {0x10000000, {}},
                                                 {-1, {}}};
    for (const auto& [ticks, bytes] : cases) {
        Bytes vlq, delta;
        EXPECT_EQ(AppendVlq(vlq, ticks), !bytes.empty()) << ticks;
        EXPECT_EQ(vlq, bytes) << ticks;
        EXPECT_EQ(AppendDelta(delta, ticks), !bytes.empty() && bytes.size() <= 3) << ticks;
        EXPECT_EQ(delta, bytes.size() <= 3 ? bytes : Bytes{}) << ticks;
    }
    // A beat at any tempo is 480 ticks; rounded half to even; the barline's silence of
    // 1e-7 s is none.
    struct Case {
        double seconds, tempo;
        long long ticks;
    };
    const Case seconds[] = {{1, 60, 480},  {0.5, 120, 480},   {60.0 / 66, 66, 480},
                            {2, 72, 1152}, {0.003125, 60, 2}, {0.0009375, 60, 0},
                            {1e-7, 66, 0}};
    for (const auto& c : seconds)
        EXPECT_EQ(SecondsToTicks(c.seconds, c.tempo), c.ticks) << c.seconds;
}

TEST(MidiWriter, BadRecordsAreErrorsWithTheirNumber) {
    const std::pair<EventRecord, std::string> cases[] = {
        {{4400, 60, 3, 0}, "Event 2 "}, // 2112000 ticks
        {{-1, 60, 3, 0}, "negative"},
        {{0, 128, 3, 0}, "key 128"},
        {{0, -1, 3, 0}, "key -1"},
    };
    for (const auto& [bad, part] : cases)
        EXPECT_NE(WriteMidiFile({{0, 60, 3, 100}, bad}, 60).error.find(part), std::string::npos)
            << part;
    EXPECT_TRUE(WriteMidiFile({{0, 60, 3, 100}, {0, 60, 3, 0}}, 60).error.empty());
}

TEST(MidiWriter, LongTrackKeepsAReadableLength) {
    std::vector<EventRecord> log;
    for (int i = 0; i < 14000; ++i)
        log.push_back({0.5, 40 + i / 2 % 40, 3, i % 2 ? 0 : 80});
    const WriteResult r = WriteMidiFile(log, 90);
    ASSERT_TRUE(r.ok());
    ASSERT_GT(r.bytes.size(), 65600u);
    const std::size_t length = static_cast<std::size_t>(r.bytes[18]) << 24 | r.bytes[19] << 16 |
                               r.bytes[20] << 8 | r.bytes[21];
    EXPECT_EQ(length, r.bytes.size() - 22);
    const MidiFileInfo info = test::Info(r.bytes);
    EXPECT_TRUE(info.complete());
    ASSERT_EQ(info.MidiTracks.size(), 1u);
    EXPECT_EQ(info.MidiTracks[0].size(), 7000u);
}

TEST(MidiWriter, FileReadsBackThroughTheReaderAndImport) {
    // Tempo 1000 writes the two-byte form whose filler becomes the next delta: A1 00 is
    // 33 * 128 = 4224 ticks before the time signature.
    MidiFileInfo info = test::Info(WriteMidiFile({{0, 60, 3, 100}, {0.03, 60, 3, 0}}, 1000).bytes);
    ASSERT_TRUE(info.complete());
    EXPECT_EQ(test::Notes(info.MidiTracks[0]), (test::NoteList{{60, 4224, 240}}));
    EXPECT_EQ(info.trackNames[0], "Track 1");
    // A quarter, an eighth and a dotted half as heard at 66 beats come back as 8, 4 and 24.
    const double beat = 60.0 / 66;
    info = test::Info(WriteMidiFile({{0, 60, 3, 100},
                                     {beat, 60, 3, 0},
                                     {0, 62, 3, 100},
                                     {beat / 2, 62, 3, 0},
                                     {0, 64, 3, 100},
                                     {3 * beat, 64, 3, 0}},
                                    66)
                          .bytes);
    EXPECT_EQ(info.MidiTempoText, 66);
    std::vector<int> durations;
    for (const MidiNote& n : info.MidiTracks[0])
        durations.push_back(DurationFor(n.length, info.quarterTicks()));
    EXPECT_EQ(durations, (std::vector<int>{8, 4, 24}));
}

TEST(MidiWriter, TestMidComesFromTheLogInTheAppFolder) {
    const ::tahrir::test::TempFolder folder;
    EXPECT_EQ(WriteTestMid(folder.path(), 60), ""); // a missing log is an empty one
    EXPECT_EQ(ReadByteVector(folder.path() / TestMidName), WriteMidiFile({}, 60).bytes);
    std::ofstream(folder.path() / EventLogName) << "9999,60,3,100\r\n";
    EXPECT_NE(WriteTestMid(folder.path(), 60), "");
}

TEST(MidiWriter, PlayLogOfADemoScoreMatchesItsGoldenFile) {
    // The log of a play run of the Shur demo at 90 beats.
    const std::filesystem::path data = std::filesystem::path(TAHRIR_TEST_DATA) / "midifile";
    const EventLog log = ReadEventLog(data / "shur_daramad.log");
    ASSERT_EQ(log.records.size(), 384u);
    EXPECT_EQ(log.skippedLines, 0);
    const WriteResult r = WriteMidiFile(log.records, 90);
    ASSERT_TRUE(r.ok()) << r.error;
    if (test::UpdateGolden()) ::tahrir::test::WriteBytes(data / "shur_daramad.mid", r.bytes);
    EXPECT_EQ(r.bytes, ReadByteVector(data / "shur_daramad.mid"));
}

} // namespace
} // namespace tahrir::midifile
