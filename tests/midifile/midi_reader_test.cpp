#include "midifile/midi_reader.h"

#include <gtest/gtest.h>

#include "smf_builder.h"

namespace tahrir::midifile {
namespace {

using test::BuildSmf;
using test::Strings;
using test::TrackBuilder;

// What the reader collects from a file of the corpus.
MidiFileInfo CorpusInfo(const std::string& name) {
    DumpList dump;
    return ReadMidiFile(test::CorpusFile(name), dump);
}

TEST(MidiReader, RunningStatusTimesTempoMapAndTrackFacts) {
    // Track 1 holds two names, 3/4 and the tempo: 120 beats up to tick 960, then 60.
    // Track 2 plays with running status; its note offs are note ons with velocity 0. The
    // dump shows ticks 480 and 960 at 0.5 s and 1 s.
    const MidiFileInfo info = CorpusInfo("valid/running_status.mid");
    ASSERT_TRUE(info.complete());
    // Tick 1440 is 1 s plus a quarter at 60.
    EXPECT_DOUBLE_EQ(TickToMs(info, 1440), 2000);
    EXPECT_EQ(info.MidiTempoText, 60); // the last tempo seen
    EXPECT_EQ(info.MidiRhythmText, "3/4");
    EXPECT_EQ(info.trackNames, (Strings{"Tar", ""})); // the first name of each track
    ASSERT_EQ(info.MidiTracks.size(), 2u);
    EXPECT_TRUE(info.MidiTracks[0].empty());
    EXPECT_EQ(test::Notes(info.MidiTracks[1]), (test::NoteList{{60, 0, 480}, {62, 960, 480}}));
}

TEST(MidiReader, SmpteAndZeroDivisions) {
    // Both count 480 ticks a quarter; their dumps, times included, are pinned in the corpus.
    EXPECT_TRUE(CorpusInfo("valid/smpte.mid").MidiUsesSmpte);
    for (const char* name : {"valid/smpte.mid", "valid/zero_division.mid"})
        EXPECT_EQ(CorpusInfo(name).quarterTicks(), 480) << name;
}

TEST(MidiReader, NotesPairNewestFirstAndOddEventsAreDropped) {
    // Ten ticks apart: Do opens, a second Do opens over it, a note off closes the newest, a
    // note off with nothing open is ignored, a velocity-0 note on of another channel closes
    // the older one, and Mi is never closed.
    EXPECT_EQ(test::Notes(CorpusInfo("valid/overlapping_notes.mid").MidiTracks[0]),
              (test::NoteList{{60, 10, 10}, {60, 0, 40}}));
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
