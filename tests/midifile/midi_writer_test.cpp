#include "midifile/midi_writer.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iomanip>
#include <sstream>

#include "case_files.h"
#include "golden_text.h"
#include "midifile/microtonal_writer.h"
#include "midifile/midi_import.h"
#include "smf_builder.h"
#include "temp_folder.h"

namespace tahrir::midifile {
namespace {

using ::tahrir::test::ReadByteVector;

// Bytes as upper-case hex pairs separated by blanks.
std::string Hex(const Bytes& bytes) {
    std::ostringstream out;
    for (std::uint8_t b : bytes)
        out << (out.tellp() > 0 ? " " : "") << std::setfill('0') << std::setw(2) << std::uppercase
            << std::hex << static_cast<int>(b);
    return out.str();
}

// The answer to one case of conversions.txt: its kind and the inputs in `in`; a tempo
// case compares as many bytes as `want` shows, a record case the part of the error it
// quotes.
std::string Answer(const std::string& kind, std::istringstream& in, const std::string& want) {
    long long a = 0, b = 0, c = 0, d = 0;
    double x = 0, y = 0;
    std::string text;
    if (kind == "import" && in >> a >> b >> c >> d)
        return '"' + ImportLine(static_cast<int>(a), b, static_cast<int>(c), static_cast<int>(d)) +
               '"';
    if (kind == "duration" && in >> a >> b)
        return std::to_string(DurationFor(a, static_cast<int>(b)));
    if (kind == "answer" && in >> std::quoted(text)) return std::to_string(AnswerNumber(text));
    if (kind == "ticks" && in >> x >> y) return std::to_string(SecondsToTicks(x, y));
    if (kind == "tempo" && in >> x) {
        const WriteResult r = WriteMidiFile({}, x);
        const std::size_t n = (want.size() + 1) / 3;
        if (!r.ok()) return "refused";
        if (r.bytes.size() < 36 + n) return "short file";
        return Hex(Bytes(r.bytes.begin() + 36, r.bytes.begin() + 36 + static_cast<long>(n)));
    }
    EventRecord r;
    const bool record = (kind == "record" || kind == "microtonal") &&
                        in >> r.seconds >> r.key >> r.channel >> r.velocity;
    if (kind == "microtonal" && record)
        return WriteMicrotonalFile({r}, {}).ok() ? "written" : "refused";
    if (kind == "record" && record) {
        const std::string error = WriteMidiFile({{0, 60, 3, 100}, r}, 60).error;
        const std::string part = want.substr(1, want.size() - 2);
        return '"' + (!part.empty() && error.find(part) != std::string::npos ? part : error) + '"';
    }
    if ((kind == "vlq" || kind == "delta") && in >> a) {
        Bytes out;
        const bool ok = kind == "vlq" ? AppendVlq(out, a) : AppendDelta(out, a);
        return ok ? Hex(out) : out.empty() ? "refused" : "refused after " + Hex(out);
    }
    return "unreadable case";
}

TEST(MidiConversions, EveryCaseOfTheDataFile) {
    int cases = 0;
    tahrir::test::ForEachCaseLine(std::string(TAHRIR_TEST_DATA) + "/midifile/conversions.txt",
                                  [&](const std::string& line, const std::string& where) {
                                      const auto equals = line.find(" = ");
                                      ASSERT_NE(equals, std::string::npos) << where;
                                      std::istringstream in(line.substr(0, equals));
                                      std::string kind;
                                      in >> kind;
                                      const std::string answer = line.substr(equals + 3);
                                      EXPECT_EQ(Answer(kind, in, answer), answer) << where;
                                      ++cases;
                                  });
    EXPECT_GE(cases, 60);
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
    ::tahrir::test::ExpectGoldenText((data / "shur_daramad.mid").string(),
                                     std::string(r.bytes.begin(), r.bytes.end()));
}

} // namespace
} // namespace tahrir::midifile
