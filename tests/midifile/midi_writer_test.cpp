#include "midifile/midi_writer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <cstdlib>

#include "midifile/midi_reader.h"
#include "temp_folder.h"

namespace tahrir::midifile {
namespace {

Bytes Tail(const Bytes& bytes, std::size_t from) {
    return Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(from), bytes.end());
}

// Header, track name, program 53 and the tempo event start every file; the tempo form
// begins at byte 36.
constexpr std::size_t TempoAt = 36;

TEST(MidiWriter, EmptyLogGivesHeaderAndTrackMetadataOnly) {
    const WriteResult r = WriteMidiFile({}, 60);
    ASSERT_TRUE(r.ok()) << r.error;
    // Track body: name 11, program 3, tempo 7, time signature 8, end 4 = 33 bytes.
    const Bytes expected = {
        'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, 1, 0, 1, 0x01, 0xE0,
        'M', 'T', 'r', 'k', 0, 0, 0, 33,
        0x00, 0xFF, 0x03, 0x07, 'T', 'r', 'a', 'c', 'k', ' ', '1',
        0x00, 0xC0, 0x35,
        0x00, 0xFF, 0x51, 0x03, 0x0F, 0x42, 0x40, // 60 beats: 1000000 us
        0x00, 0xFF, 0x58, 0x04, 0x04, 0x02, 0x18, 0x20,
        0x00, 0xFF, 0x2F, 0x00};
    EXPECT_EQ(r.bytes, expected);
}

TEST(MidiWriter, TempoLengthForms) {
    struct Case {
        double tempo;
        Bytes form; // from the length byte on, up to the time signature's delta
    };
    const Case cases[] = {
        {60, {3, 0x0F, 0x42, 0x40}},
        {120, {3, 0x07, 0xA1, 0x20}},     // 500000
        {915, {3, 0x01, 0x00, 0x25}},     // 65573: still three bytes
        {916, {2, 0xFF, 0xDE, 161}},      // 65502: two bytes and the filler
        {1000, {2, 0xEA, 0x60, 161}},     // 60000
        {72.5, {3, 0x0C, 0xA0, 0xC2}},    // 827586.2 keeps its integer part, 827586
        {300000, {1, 200}},               // one byte
    };
    for (const Case& c : cases) {
        const WriteResult r = WriteMidiFile({}, c.tempo);
        ASSERT_TRUE(r.ok()) << c.tempo;
        const Bytes tempo(r.bytes.begin() + TempoAt, r.bytes.begin() + TempoAt + 3);
        EXPECT_EQ(tempo, (Bytes{0x00, 0xFF, 0x51})) << c.tempo;
        const Bytes form(r.bytes.begin() + TempoAt + 3,
                         r.bytes.begin() + static_cast<std::ptrdiff_t>(TempoAt + 3 + c.form.size()));
        EXPECT_EQ(form, c.form) << c.tempo;
        // The time signature follows right after the form.
        EXPECT_EQ(r.bytes[TempoAt + 3 + c.form.size() + 2], 0x58) << c.tempo;
    }
    EXPECT_FALSE(WriteMidiFile({}, 0).ok());
    EXPECT_FALSE(WriteMidiFile({}, -5).ok());
    EXPECT_FALSE(WriteMidiFile({}, 3).ok()); // 20000000 us does not fit three bytes
}

TEST(MidiWriter, DeltaFormsAndOverflow) {
    const std::pair<long long, Bytes> cases[] = {
        {0, {0}},
        {127, {0x7F}},
        {128, {0x81, 0x00}},
        {16383, {0xFF, 0x7F}},
        {16384, {0x81, 0x80, 0x00}},
        {2097151, {0xFF, 0xFF, 0x7F}},
    };
    for (const auto& [ticks, bytes] : cases) {
        Bytes out;
        EXPECT_TRUE(AppendDelta(out, ticks));
        EXPECT_EQ(out, bytes) << ticks;
    }
    Bytes out;
    EXPECT_FALSE(AppendDelta(out, 2097152));
    EXPECT_FALSE(AppendDelta(out, -1));
    EXPECT_TRUE(out.empty());
}

TEST(MidiWriter, TicksFromSecondsRoundToNearest) {
    EXPECT_EQ(SecondsToTicks(1), 960);
    EXPECT_EQ(SecondsToTicks(0.5), 480);
    EXPECT_EQ(SecondsToTicks(0.001), 1);     // 0.96
    EXPECT_EQ(SecondsToTicks(0.0005), 0);    // 0.48
    EXPECT_EQ(SecondsToTicks(0.0000001), 0); // the barline's silence
}

TEST(MidiWriter, EventsUseFixedVelocitiesAndChannelZero) {
    // A quarter of a second gives 240 ticks: 81 70.
    const std::vector<EventRecord> log = {
        {0, 60, 3, 100}, {0.25, 60, 3, 0}, {0, 62, 2, 90}, {2.5, 62, 2, 0}};
    const WriteResult r = WriteMidiFile(log, 60);
    ASSERT_TRUE(r.ok()) << r.error;
    const Bytes events = {0x00, 144, 60, 64, 0x81, 0x70, 128, 60, 32,
                          0x00, 144, 62, 64, 0x92, 0x60, 128, 62, 32, // 2400 ticks
                          0x00, 0xFF, 0x2F, 0x00};
    EXPECT_EQ(Tail(r.bytes, r.bytes.size() - events.size()), events);
    EXPECT_EQ(r.bytes[20] * 256 + r.bytes[21], static_cast<int>(r.bytes.size()) - 22);
}

TEST(MidiWriter, BadRecordsAreErrorsWithTheirNumber) {
    const auto error = [](EventRecord bad) {
        return WriteMidiFile({{0, 60, 3, 100}, bad}, 60).error;
    };
    EXPECT_NE(error({2200, 60, 3, 0}).find("Event 2 "), std::string::npos); // 2112000 ticks
    EXPECT_NE(error({-1, 60, 3, 0}).find("negative"), std::string::npos);
    EXPECT_NE(error({0, 128, 3, 0}).find("key 128"), std::string::npos);
    EXPECT_NE(error({0, -1, 3, 0}).find("key -1"), std::string::npos);
    EXPECT_TRUE(error({0, 60, 3, 0}).empty());
}

TEST(MidiWriter, LongTrackKeepsAReadableLength) {
    std::vector<EventRecord> log;
    for (int i = 0; i < 14000; ++i) log.push_back({0.5, 40 + i / 2 % 40, 3, i % 2 ? 0 : 80});
    const WriteResult r = WriteMidiFile(log, 90);
    ASSERT_TRUE(r.ok());
    ASSERT_GT(r.bytes.size(), 65600u);
    const std::size_t length = static_cast<std::size_t>(r.bytes[18]) << 24 | r.bytes[19] << 16 |
                               r.bytes[20] << 8 | r.bytes[21];
    EXPECT_EQ(length, r.bytes.size() - 22);
    DumpList dump;
    const MidiFileInfo info = ReadMidiBytes(r.bytes, dump);
    EXPECT_TRUE(info.complete());
    ASSERT_EQ(info.MidiTracks.size(), 1u);
    EXPECT_EQ(info.MidiTracks[0].size(), 7000u);
}

TEST(MidiWriter, FileReadsBackThroughTheReader) {
    // Tempo 1000 writes the two-byte form whose filler becomes the next delta: A1 00 is
    // 33 * 128 = 4224 ticks before the time signature.
    const std::vector<EventRecord> log = {{0, 60, 3, 100}, {0.5, 60, 3, 0}};
    const WriteResult r = WriteMidiFile(log, 1000);
    DumpList dump;
    const MidiFileInfo info = ReadMidiBytes(r.bytes, dump);
    ASSERT_TRUE(info.complete());
    ASSERT_EQ(info.MidiTracks[0].size(), 1u);
    EXPECT_EQ(info.MidiTracks[0][0].key, 60);
    EXPECT_EQ(info.MidiTracks[0][0].start, 4224);
    EXPECT_EQ(info.MidiTracks[0][0].length, 480);
    EXPECT_EQ(info.trackNames[0], "Track 1");
    EXPECT_EQ(info.MidiTempoText, 1000);
}

TEST(MidiWriter, TestMidComesFromTheLogInTheAppFolder) {
    const ::tahrir::test::TempFolder folder;
    EXPECT_EQ(WriteTestMid(folder.path(), 60), "");
    const auto empty = ::tahrir::test::ReadByteVector(folder.path() / TestMidName);
    EXPECT_EQ(empty, WriteMidiFile({}, 60).bytes); // no log: header and metadata only

    std::ofstream(folder.path() / EventLogName) << "0,60,3,100\r\n.25,60,3,0\r\n";
    EXPECT_EQ(WriteTestMid(folder.path(), 60), "");
    EXPECT_EQ(::tahrir::test::ReadByteVector(folder.path() / TestMidName),
              WriteMidiFile({{0, 60, 3, 100}, {0.25, 60, 3, 0}}, 60).bytes);

    std::ofstream(folder.path() / EventLogName) << "9999,60,3,100\r\n";
    EXPECT_NE(WriteTestMid(folder.path(), 60), "");
}

TEST(MidiWriter, PlayLogOfADemoScoreMatchesItsGoldenFile) {
    // The log of a play run of the Shur demo at 90 beats; the golden file is refreshed
    // only with TAHRIR_UPDATE_GOLDEN=1.
    const std::filesystem::path data = std::filesystem::path(TAHRIR_TEST_DATA) / "midifile";
    const EventLog log = ReadEventLog(data / "shur_daramad.log");
    ASSERT_EQ(log.records.size(), 384u);
    EXPECT_EQ(log.skippedLines, 0);
    const WriteResult r = WriteMidiFile(log.records, 90);
    ASSERT_TRUE(r.ok()) << r.error;
    const char* update = std::getenv("TAHRIR_UPDATE_GOLDEN");
    if (update != nullptr && std::string(update) == "1")
        ::tahrir::test::WriteBytes(data / "shur_daramad.mid", r.bytes);
    EXPECT_EQ(r.bytes, ::tahrir::test::ReadByteVector(data / "shur_daramad.mid"));
    // Koron and sori notes come out as their plain keys, all on channel 0.
    DumpList dump;
    const MidiFileInfo info = ReadMidiBytes(r.bytes, dump);
    ASSERT_TRUE(info.complete());
    EXPECT_EQ(info.MidiTracks[0].size(), 192u);
    for (const std::string& line : dump.lines)
        if (line.find("Note") != std::string::npos) {
            ASSERT_NE(line.find(" ch=1 "), std::string::npos) << line;
        }
}

} // namespace
} // namespace tahrir::midifile
