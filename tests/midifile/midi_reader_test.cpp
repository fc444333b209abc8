#include "midifile/midi_reader.h"

#include <gtest/gtest.h>

#include "smf_builder.h"
#include "temp_folder.h"

namespace tahrir::midifile {
namespace {

using test::BuildSmf;
using test::TrackBuilder;

std::vector<std::string> Dump(const test::Bytes& bytes, MidiFileInfo* info = nullptr) {
    DumpList list;
    MidiFileInfo read = ReadMidiBytes(bytes, list);
    if (info) *info = std::move(read);
    return list.lines;
}

TEST(MidiReader, HeaderAndEveryChannelMessageText) {
    TrackBuilder t;
    t.event(0, {0x90, 60, 100})
        .event(0, {0x91, 61, 0})      // velocity 0: a note off
        .event(0, {0x82, 62, 33})
        .event(0, {0xA3, 64, 5})
        .event(0, {0xB4, 7, 127})
        .event(0, {0xC5, 53})
        .event(0, {0xDF, 9})
        .event(0, {0xE0, 0x00, 0x40}) // 64 * 128 = 8192
        .event(0, {0xE1, 0x7F, 0x7F})
        .end();
    const auto lines = Dump(BuildSmf(0, 480, {t}));
    const std::vector<std::string> expected = {
        "===== MIDI Header =====",
        "Format: 0, Tracks: 1, Division: 480",
        "Timing: PPQN = 480",
        "===== Tracks =====",
        "t  0.000s  Tr1  NoteOn   ch=1 key=60 vel=100",
        "t  0.000s  Tr1  NoteOff  ch=2 key=61 vel=0",
        "t  0.000s  Tr1  NoteOff  ch=3 key=62 vel=33",
        "t  0.000s  Tr1  PolyAT   ch=4 key=64 press=5",
        "t  0.000s  Tr1  CC       ch=5 cc#=7 val=127",
        "t  0.000s  Tr1  Program  ch=6 prog#=53",
        "t  0.000s  Tr1  ChPress  ch=16 press=9",
        "t  0.000s  Tr1  PitchBend ch=1 val=8192",
        "t  0.000s  Tr1  PitchBend ch=2 val=16383",
        "t  0.000s  Tr1  Meta EndOfTrack",
        "===== Done =====",
    };
    EXPECT_EQ(lines, expected);
}

TEST(MidiReader, MetaAndSystemExclusiveTexts) {
    TrackBuilder t;
    const char* texts[] = {"words", "(c) us", "Melody", "Tar", "la", "A", "cue"};
    for (int type = 1; type <= 7; ++type) t.meta(0, static_cast<std::uint8_t>(type), texts[type - 1]);
    t.meta(0, 0x51, std::string("\x07\xA1\x20", 3))
        .meta(0, 0x58, std::string("\x06\x03\x18\x08", 4))
        .meta(0, 0x59, std::string("\xFD\x01", 2))
        .meta(0, 0x59, std::string("\x02\x00", 2))
        .meta(0, 0x7F, "abc")
        .meta(0, 0x00, std::string("\x00\x01", 2))
        .event(0, {0xF0, 3, 0x43, 0x12, 0xF7})
        .event(0, {0xF7, 1, 0xF7})
        .end();
    const auto lines = Dump(BuildSmf(1, 96, {t}));
    const std::vector<std::string> expected = {
        "t  0.000s  Tr1  Meta Text: words",
        "t  0.000s  Tr1  Meta Copyright: (c) us",
        "t  0.000s  Tr1  Meta TrackName: Melody",
        "t  0.000s  Tr1  Meta Instrument: Tar",
        "t  0.000s  Tr1  Meta Lyric: la",
        "t  0.000s  Tr1  Meta Marker: A",
        "t  0.000s  Tr1  Meta CuePoint: cue",
        "t  0.000s  Tr1  Meta SetTempo: 500000 us/qn  (~120 BPM)",
        "t  0.000s  Tr1  Meta TimeSig: 6/8  (clks/beat=24, 32nds/24clks=8)",
        "t  0.000s  Tr1  Meta KeySig: -3  minor",
        "t  0.000s  Tr1  Meta KeySig: 2  major",
        "t  0.000s  Tr1  Meta 0x7F len=3",
        "t  0.000s  Tr1  Meta 0x0 len=2",
        "t  0.000s  Tr1  SysEx F0 len=3",
        "t  0.000s  Tr1  SysEx F7 len=1",
        "t  0.000s  Tr1  Meta EndOfTrack",
    };
    ASSERT_GE(lines.size(), 5 + expected.size());
    EXPECT_EQ(std::vector<std::string>(lines.begin() + 4, lines.end() - 1), expected);
}

TEST(MidiReader, RunningStatusTimesAndTempoMapAcrossTracks) {
    // Track 1 holds the tempo: 120 beats up to tick 960, then 60. Track 2 plays with
    // running status; its note offs are note ons with velocity 0.
    TrackBuilder conductor;
    conductor.meta(0, 0x51, std::string("\x07\xA1\x20", 3))
        .meta(960, 0x51, std::string("\x0F\x42\x40", 3))
        .end();
    TrackBuilder melody;
    melody.event(0, {0x90, 60, 90}).event(480, {60, 0}).event(480, {62, 80}).event(480, {62, 0}).end(1);
    MidiFileInfo info;
    const auto lines = Dump(BuildSmf(1, 480, {conductor, melody}), &info);
    ASSERT_TRUE(info.complete());
    // Ticks 480 and 960 lie at 0.5 s and 1 s; tick 1440 is 1 s plus a quarter at 60.
    const std::vector<std::string> expected = {
        "t  0.000s  Tr2  NoteOn   ch=1 key=60 vel=90",
        "t  0.500s  Tr2  NoteOff  ch=1 key=60 vel=0",
        "t  1.000s  Tr2  NoteOn   ch=1 key=62 vel=80",
        "t  2.000s  Tr2  NoteOff  ch=1 key=62 vel=0",
        "t  2.002s  Tr2  Meta EndOfTrack",
    };
    EXPECT_EQ(std::vector<std::string>(lines.end() - 6, lines.end() - 1), expected);
    EXPECT_EQ(info.MidiTempoMap.size(), 3u);
    ASSERT_EQ(info.MidiTempoSegments.size(), 3u);
    EXPECT_DOUBLE_EQ(info.MidiTempoSegments[2].startMs, 1000);
    EXPECT_DOUBLE_EQ(TickToMs(info, 1440), 2000);
    EXPECT_EQ(info.MidiTempoText, 60); // the last tempo seen
    ASSERT_EQ(info.MidiTracks.size(), 2u);
    EXPECT_TRUE(info.MidiTracks[0].empty());
    ASSERT_EQ(info.MidiTracks[1].size(), 2u);
    EXPECT_EQ(info.MidiTracks[1][1].start, 960);
    EXPECT_EQ(info.MidiTracks[1][1].length, 480);
}

TEST(MidiReader, SmptePpqnAndInvalidDivisions) {
    TrackBuilder t;
    t.event(0, {0x90, 60, 1}).event(100, {0x80, 60, 0}).end();
    // 25 fps, 40 ticks a frame: one tick is one millisecond.
    MidiFileInfo info;
    auto lines = Dump(BuildSmf(0, 0xE728, {t}), &info);
    EXPECT_EQ(lines[1], "Format: 0, Tracks: 1, Division: -6360");
    EXPECT_EQ(lines[2], "Timing: SMPTE 25 fps, 40 ticks/frame");
    EXPECT_EQ(lines[5], "t  0.100s  Tr1  NoteOff  ch=1 key=60 vel=0");
    EXPECT_TRUE(info.MidiUsesSmpte);
    EXPECT_EQ(info.quarterTicks(), 480);

    lines = Dump(BuildSmf(0, 0xE700, {t}));
    EXPECT_EQ(lines[2], "[WARN] Invalid SMPTE division; timing may be incorrect.");
    EXPECT_EQ(lines[3], "===== Tracks =====");
    EXPECT_EQ(lines.back(), "===== Done =====");

    // A division of 0 counts as 480 for times and lengths.
    lines = Dump(BuildSmf(0, 0, {t}), &info);
    EXPECT_EQ(lines[2], "Timing: PPQN = 0");
    EXPECT_EQ(lines[5], "t  0.104s  Tr1  NoteOff  ch=1 key=60 vel=0");
    EXPECT_EQ(info.quarterTicks(), 480);
}

TEST(MidiReader, NotesPairNewestFirstAndOddEventsAreDropped) {
    TrackBuilder t;
    t.event(0, {0x90, 60, 90})
        .event(10, {0x90, 60, 91})  // a second 60 opens over the first
        .event(10, {0x80, 60, 0})   // closes the newest
        .event(10, {0x80, 61, 0})   // nothing open: ignored
        .event(10, {0x91, 60, 0})   // closes the older one, any channel
        .event(10, {0x90, 64, 90})  // never closed
        .end();
    MidiFileInfo info;
    Dump(BuildSmf(0, 480, {t}), &info);
    ASSERT_EQ(info.MidiTracks[0].size(), 2u);
    EXPECT_EQ(info.MidiTracks[0][0].start, 10);
    EXPECT_EQ(info.MidiTracks[0][0].length, 10);
    EXPECT_EQ(info.MidiTracks[0][1].start, 0);
    EXPECT_EQ(info.MidiTracks[0][1].length, 40);
}

TEST(MidiReader, NamesRhythmAndTempoTextForTheImport) {
    TrackBuilder a, b;
    a.meta(0, 0x03, "Tar").meta(0, 0x03, "Second name").meta(0, 0x58, std::string("\x03\x02\x18\x08", 4)).end();
    b.meta(0, 0x51, std::string("\x0B\x71\xB0", 3)).end(); // 750000: 80 beats
    MidiFileInfo info;
    Dump(BuildSmf(1, 480, {a, b}), &info);
    EXPECT_EQ(info.trackNames, (std::vector<std::string>{"Tar", ""}));
    EXPECT_EQ(info.MidiRhythmText, "3/4");
    EXPECT_EQ(info.MidiTempoText, 80);
}

TEST(MidiReader, ErrorsStopTheDumpWithTheirText) {
    EXPECT_EQ(Dump({'R', 'I', 'F', 'F', 0, 0, 0, 6, 0, 0, 0, 1, 0, 96}),
              (std::vector<std::string>{"[ERROR] Not a standard MIDI file (missing MThd)"}));
    EXPECT_EQ(Dump({'M', 'T', 'h', 'd', 0, 0}).back(),
              "[ERROR] Not a standard MIDI file (missing MThd)");

    TrackBuilder t;
    t.event(0, {0x90, 60, 90}).end();
    auto lines = Dump(BuildSmf(1, 480, {t, t}, 3));
    EXPECT_EQ(lines, (std::vector<std::string>{"===== MIDI Header =====",
                                               "Format: 1, Tracks: 3, Division: 480",
                                               "Timing: PPQN = 480",
                                               "[ERROR] Missing MTrk at track 3"}));

    const ::tahrir::test::TempFolder folder;
    DumpList list;
    const MidiFileInfo info = ReadMidiFile(folder.path() / "absent.mid", list);
    EXPECT_EQ(info.outcome, ReadOutcome::Unreadable);
    EXPECT_EQ(list.lines, (std::vector<std::string>{"[ERROR] Cannot read file: " +
                                                    (folder.path() / "absent.mid").string()}));
}

TEST(MidiReader, LongHeaderAndTruncatedOrUndecodableTracks) {
    // A header of 8 bytes: the two extra ones are skipped.
    TrackBuilder t;
    t.event(0, {0x90, 60, 90}).event(0, {0xF4}).event(0, {0x80, 60, 0}).end();
    test::Bytes bytes = BuildSmf(0, 480, {t});
    bytes[7] = 8;
    bytes.insert(bytes.begin() + 14, {0xAA, 0xBB});
    auto lines = Dump(bytes);
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(lines[5], "t  0.000s  Tr1  Unknown ChannelMsg"); // F4 ends the track
    EXPECT_EQ(lines[6], "===== Done =====");

    // A data byte before any status, then a track cut in the middle of a message whose
    // chunk length claims more than the file holds.
    TrackBuilder u;
    u.event(0, {60, 90});
    TrackBuilder v;
    v.event(0, {0x90, 60, 90}).event(0, {0x90, 61});
    bytes = BuildSmf(1, 480, {u, v});
    bytes[bytes.size() - 7 - 4 + 3] = 0x7F;
    lines = Dump(bytes);
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "===== MIDI Header =====", "Format: 1, Tracks: 2, Division: 480",
                         "Timing: PPQN = 480", "===== Tracks =====",
                         "t  0.000s  Tr1  Unknown ChannelMsg",
                         "t  0.000s  Tr2  NoteOn   ch=1 key=60 vel=90", "===== Done ====="}));
}

TEST(MidiReader, CancelWritesTerminated) {
    class CancelAfter : public DumpSink {
    public:
        void addLine(std::string line) override { lines.push_back(std::move(line)); }
        bool cancelled() override { return ++asked > 2; }
        std::vector<std::string> lines;
        int asked = 0;
    } sink;
    TrackBuilder t;
    for (int i = 0; i < 10; ++i) t.event(1, {0x90, 60, 90});
    const MidiFileInfo info = ReadMidiBytes(BuildSmf(0, 480, {t.end()}), sink);
    EXPECT_EQ(info.outcome, ReadOutcome::Cancelled);
    ASSERT_EQ(sink.lines.size(), 7u);
    EXPECT_EQ(sink.lines[5], "t  0.002s  Tr1  NoteOn   ch=1 key=60 vel=90");
    EXPECT_EQ(sink.lines[6], "Terminated");
}

} // namespace
} // namespace tahrir::midifile
