#include "midifile/midi_reader.h"

#include <gtest/gtest.h>

#include "smf_builder.h"

namespace tahrir::midifile {
namespace {

using test::BuildSmf;
using test::Bytes;
using test::Dump;
using test::Strings;
using test::TrackBuilder;

Bytes Meta(std::uint8_t type, const std::string& data) {
    Bytes bytes = {0xFF, type, static_cast<std::uint8_t>(data.size())};
    bytes.insert(bytes.end(), data.begin(), data.end());
    return bytes;
}

TEST(MidiReader, HeaderAndTheTextOfEveryEvent) {
    // Forms the corpus dumps do not show: velocity 0, a note off's own velocity, the
    // bend's middle and top, other texts, a major key and the escape form of SysEx.
    const std::pair<Bytes, std::string> rows[] = {
        {{0x91, 61, 0}, "NoteOff  ch=2 key=61 vel=0"}, // velocity 0: a note off
        {{0x82, 62, 33}, "NoteOff  ch=3 key=62 vel=33"},
        {{0xE0, 0x00, 0x40}, "PitchBend ch=1 val=8192"}, // 64 * 128
        {{0xE1, 0x7F, 0x7F}, "PitchBend ch=2 val=16383"},
        {Meta(1, "words"), "Meta Text: words"},
        {Meta(7, "cue"), "Meta CuePoint: cue"},
        {Meta(0x59, std::string("\x02\x00", 2)), "Meta KeySig: 2  major"},
        {Meta(0x00, std::string("\x00\x01", 2)), "Meta 0x0 len=2"},
        {{0xF7, 1, 0xF7}, "SysEx F7 len=1"},
    };
    TrackBuilder t;
    Strings expected = {"===== MIDI Header =====", "Format: 0, Tracks: 1, Division: 480",
                        "Timing: PPQN = 480", "===== Tracks ====="};
    for (const auto& [bytes, text] : rows) {
        t.event(0, bytes);
        expected.push_back("t  0.000s  Tr1  " + text);
    }
    expected.push_back("===== Done =====");
    EXPECT_EQ(Dump(BuildSmf(0, 480, {t})), expected);
}

TEST(MidiReader, RunningStatusTimesTempoMapAndTrackFacts) {
    // Track 1 holds two names, 3/4 and the tempo: 120 beats up to tick 960, then 60.
    // Track 2 plays with running status; its note offs are note ons with velocity 0.
    TrackBuilder conductor, melody;
    conductor.meta(0, 0x03, "Tar")
        .meta(0, 0x03, "Second name")
        .meta(0, 0x58, "\x03\x02\x18\x08")
        .meta(0, 0x51, "\x07\xA1\x20")
        .meta(960, 0x51, "\x0F\x42\x40")
        .end();
    melody.event(0, {0x90, 60, 90})
        .event(480, {60, 0})
        .event(480, {62, 80})
        .event(480, {62, 0})
        .end(1);
    MidiFileInfo info;
    const auto lines = Dump(BuildSmf(1, 480, {conductor, melody}), &info);
    ASSERT_TRUE(info.complete());
    // Ticks 480 and 960 lie at 0.5 s and 1 s; tick 1440 is 1 s plus a quarter at 60.
    EXPECT_EQ(
        Strings(lines.end() - 6, lines.end() - 1),
        (Strings{"t  0.000s  Tr2  NoteOn   ch=1 key=60 vel=90",
                 "t  0.500s  Tr2  NoteOff  ch=1 key=60 vel=0",
                 "t  1.000s  Tr2  NoteOn   ch=1 key=62 vel=80",
                 "t  2.000s  Tr2  NoteOff  ch=1 key=62 vel=0", "t  2.002s  Tr2  Meta EndOfTrack"}));
    EXPECT_DOUBLE_EQ(TickToMs(info, 1440), 2000);
    EXPECT_EQ(info.MidiTempoText, 60); // the last tempo seen
    EXPECT_EQ(info.MidiRhythmText, "3/4");
    EXPECT_EQ(info.trackNames, (Strings{"Tar", ""})); // the first name of each track
    ASSERT_EQ(info.MidiTracks.size(), 2u);
    EXPECT_TRUE(info.MidiTracks[0].empty());
    EXPECT_EQ(test::Notes(info.MidiTracks[1]), (test::NoteList{{60, 0, 480}, {62, 960, 480}}));
}

TEST(MidiReader, SmpteAndZeroDivisions) {
    TrackBuilder t;
    t.event(0, {0x90, 60, 1}).event(100, {0x80, 60, 0}).end();
    // The SMPTE dump lines are pinned by the corpus; its notes count 480 ticks a quarter.
    MidiFileInfo info = test::Info(BuildSmf(0, 0xE728, {t}));
    EXPECT_TRUE(info.MidiUsesSmpte);
    EXPECT_EQ(info.quarterTicks(), 480);

    // A division of 0 counts as 480 for times and lengths.
    const auto lines = Dump(BuildSmf(0, 0, {t}), &info);
    EXPECT_EQ(lines[2], "Timing: PPQN = 0");
    EXPECT_EQ(lines[5], "t  0.104s  Tr1  NoteOff  ch=1 key=60 vel=0");
    EXPECT_EQ(info.quarterTicks(), 480);
}

TEST(MidiReader, NotesPairNewestFirstAndOddEventsAreDropped) {
    TrackBuilder t;
    t.event(0, {0x90, 60, 90})
        .event(10, {0x90, 60, 91}) // a second 60 opens over the first
        .event(10, {0x80, 60, 0})  // closes the newest
        .event(10, {0x80, 61, 0})  // nothing open: ignored
        .event(10, {0x91, 60, 0})  // closes the older one, any channel
        .event(10, {0x90, 64, 90}) // never closed
        .end();
    EXPECT_EQ(test::Notes(test::Info(BuildSmf(0, 480, {t})).MidiTracks[0]),
              (test::NoteList{{60, 10, 10}, {60, 0, 40}}));
}

TEST(MidiReader, LongHeaderAndTruncatedOrUndecodableTracks) {
    // A header of 8 bytes: the two extra ones are skipped.
    TrackBuilder t;
    t.event(0, {0x90, 60, 90}).event(0, {0xF4}).event(0, {0x80, 60, 0}).end();
    Bytes bytes = BuildSmf(0, 480, {t});
    bytes[7] = 8;
    bytes.insert(bytes.begin() + 14, {0xAA, 0xBB});
    auto lines = Dump(bytes);
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(lines[5], "t  0.000s  Tr1  Unknown ChannelMsg"); // F4 ends the track
    EXPECT_EQ(lines[6], "===== Done =====");

    // A data byte before any status, then a track cut in the middle of a message whose
    // chunk length claims more than the file holds.
    TrackBuilder u, v;
    u.event(0, {60, 90});
    v.event(0, {0x90, 60, 90}).event(0, {0x90, 61});
    bytes = BuildSmf(1, 480, {u, v});
    bytes[bytes.size() - 7 - 4 + 3] = 0x7F;
    EXPECT_EQ(
        Dump(bytes),
        (Strings{"===== MIDI Header =====", "Format: 1, Tracks: 2, Division: 480",
                 "Timing: PPQN = 480", "===== Tracks =====", "t  0.000s  Tr1  Unknown ChannelMsg",
                 "t  0.000s  Tr2  NoteOn   ch=1 key=60 vel=90", "===== Done ====="}));
}

TEST(MidiReader, CancelWritesTerminated) {
    class CancelAfter : public DumpSink {
    public:
        void addLine(std::string_view line) override { lines.emplace_back(line); }
        bool cancelled() override { return ++asked > 2; }
        Strings lines;
        int asked = 0;
    } sink;
    TrackBuilder t;
    for (int i = 0; i < 10; ++i)
        t.event(1, {0x90, 60, 90});
    EXPECT_EQ(ReadMidiBytes(BuildSmf(0, 480, {t.end()}), sink).outcome, ReadOutcome::Cancelled);
    ASSERT_EQ(sink.lines.size(), 7u);
    EXPECT_EQ(sink.lines[5], "t  0.002s  Tr1  NoteOn   ch=1 key=60 vel=90");
    EXPECT_EQ(sink.lines[6], "Terminated");
}

} // namespace
} // namespace tahrir::midifile
