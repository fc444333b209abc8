#include <gtest/gtest.h>

#include <tuple>

#include "play/note_player.h"
#include "play_test_util.h"

namespace tahrir::play {
namespace {

using testing::NoteEvent;
using testing::NoteEvents;
using testing::NoteOns;
using testing::OnTimes;
using Ons = std::vector<std::pair<int, int>>;

class NotePlayerTest : public ::testing::Test {
protected:
    NotePlayerTest() : notes(midi, state, controls) {
        midi.MidiOutputOn = true;
        state.ActiveTempo = 60; // a quarter (8 32nds) lasts one second
        notes.beginRun();
        notes.EventLogOn = true;
    }
    void line(int step, int octave, int duration, char accidental = ' ', const char* mark = "  ",
              int at = 10) {
        notes.PlayNoteLine(step, octave, duration, accidental, core::ReadMark(mark[0], mark[1]),
                           at);
    }
    void restart() {
        sink.clear();
        notes.setNow(0);
        notes.beginRun();
    }
    RecordingSink sink;
    MidiOut midi{&sink};
    RunState state;
    PlayControls controls;
    NotePlayer notes;
};

TEST_F(NotePlayerTest, VoiceChannelFollowsAccidentalSignatureAndMeasure) {
    line(2, 3, 8, 'K'); // koron Re
    state.KeySignature[6] = 'S';
    line(6, 3, 8);      // La takes the sori of the signature
    line(6, 3, 8, 'N'); // the natural sign cancels it
    line(4, 3, 8, 'D'); // Fa sharp: a semitone on the natural voice
    line(7, 3, 8, 'B'); // Si flat
    state.MeasureAccidentals[3] = 'K';
    line(3, 3, 8); // Mi keeps the koron met earlier in the measure
    EXPECT_EQ(NoteOns(sink), (Ons{{62, 2}, {69, 4}, {69, 3}, {66, 3}, {70, 3}, {64, 2}}));
}

TEST_F(NotePlayerTest, OctaveMarksOctaveStateAndKeysOffTheTable) {
    line(1, 9, 8); // off the table: skipped
    line(1, 3, 8, ' ', "8U");
    line(1, 3, 8, ' ', "8D");
    state.OctaveState = OctaveStateBase / 2;
    line(1, 3, 8);
    state.OctaveState = OctaveStateBase * 2;
    line(1, 3, 8);
    EXPECT_EQ(NoteOns(sink), (Ons{{72, 3}, {48, 3}, {48, 3}, {72, 3}}));
}

TEST_F(NotePlayerTest, AccentRaisesVelocityHalfAndPedalHoldsEveryNote) {
    // Velocity is 90 - VolScr; an accent takes it half again, held at 127, halves rounding
    // to the even neighbour (63 * 1.5 = 94.5 gives 94, 61 * 1.5 = 91.5 gives 92).
    // With the pedal down neither the next note nor a rest stops a note.
    using Row = std::tuple<int, const char*, int>; // VolScr, mark, velocity
    controls.Pedal = true;
    int step = 1;
    for (const auto& [volScr, mark, velocity] :
         {Row{30, "AC", 90}, Row{0, "AC", 127}, Row{0, "  ", 90}, Row{27, "AC", 94},
          Row{29, "AC", 92}}) {
        sink.clear();
        controls.VolScr = volScr;
        line(step++, 3, 8, ' ', mark);
        line(0, 3, 8);
        const auto events = NoteEvents(sink);
        ASSERT_EQ(events.size(), 1u) << step;
        EXPECT_EQ(events[0].velocity, velocity) << step;
    }
}

TEST_F(NotePlayerTest, TieContinuesTheNoteAndLengthensItsLogRecord) {
    // A tie to the same pitch holds Do; a tie to another pitch sounds Mi normally.
    core::ScoreSheet sheet;
    sheet.setLine(10, testing::Note(1, 3, 8, ' ', "TI"));
    sheet.setLine(11, testing::Note(1, 3, 4));
    sheet.setLine(12, testing::Note(2, 3, 8, ' ', "TI"));
    sheet.setLine(13, testing::Note(3, 3, 8));
    notes.setSheet(&sheet);
    line(1, 3, 8, ' ', "TI", 10);
    line(1, 3, 4, ' ', "  ", 11);
    line(2, 3, 8, ' ', "TI", 12);
    line(3, 3, 8, ' ', "  ", 13);
    const std::vector<NoteEvent> expected = {{0, 'N', 60, 3, 60},
                                             {1.5, 'N', 62, 3, 60},
                                             {1.5, 'F', 60, 3, 0},
                                             {2.5, 'N', 64, 3, 60},
                                             {2.5, 'F', 62, 3, 0}};
    EXPECT_EQ(NoteEvents(sink), expected);
    EXPECT_EQ(notes.eventLog().text(),
              "0,60,3,60\r\n1.5,60,3,0\r\n0,62,3,60\r\n1,62,3,0\r\n0,64,3,60\r\n1,64,3,0\r\n");
}

TEST_F(NotePlayerTest, OrnamentsSpreadTheirNotesOverTheWrittenTime) {
    // Dorrab, mordent and staccato are in the golden run. The interval mordent takes 0.1,
    // 0.1, 0.78; a trill fills 0.8 of the note in rounds of two strokes.
    // Each row: the ornament on one note, then Do; the keys and times of the note ons.
    const struct {
        const char* mark;
        int step, duration;
        std::vector<int> keys;
        std::vector<double> times;
    } rows[] = {
        {"2M", 5, 8, {64, 67, 64, 60}, {0, 0.1, 0.2, 0.98}}, // Sol with Mi below
        // Every first character from "1" to "K" makes the interval form, ":" included; its
        // companion is step - Val(":M") = step - 0, the note itself.
        {":M", 5, 8, {67, 67, 67, 60}, {0, 0.1, 0.2, 0.98}},
        {"TR", 1, 1, {60, 62, 60}, {0, 0.05, 0.1}}, // a 32nd: N = 0.5 is held at 1
    };
    for (const auto& row : rows) {
        restart();
        line(row.step, 3, row.duration, ' ', row.mark);
        line(1, 3, 8);
        Ons ons;
        for (int key : row.keys)
            ons.emplace_back(key, 3);
        EXPECT_EQ(NoteOns(sink), ons) << row.mark;
        const auto t = OnTimes(sink);
        ASSERT_EQ(t.size(), row.times.size()) << row.mark;
        for (std::size_t i = 0; i < t.size(); ++i)
            EXPECT_NEAR(t[i], row.times[i], 1e-9) << row.mark << " note " << i;
    }
    // Trill with the flat of the next step, then riz: four rounds of two 0.1 s strokes each.
    restart();
    state.KeySignature[7] = 'B';
    line(6, 3, 8, ' ', "TB");
    line(6, 3, 8, ' ', "T ");
    line(1, 3, 8);
    Ons ons;
    for (int i = 0; i < 16; ++i)
        ons.emplace_back(i < 8 && i % 2 ? 70 : 69, 3);
    ons.emplace_back(60, 3);
    EXPECT_EQ(NoteOns(sink), ons);
    const auto t = OnTimes(sink);
    for (std::size_t i = 0; i < t.size(); ++i)
        EXPECT_NEAR(t[i], 0.1 * static_cast<double>(i), 1e-9) << i;
}

TEST_F(NotePlayerTest, TogetherCountsColonAsTenLikeA) {
    // Sol with the note ten steps below its upper neighbour, ":" counting ten like "A".
    for (const char* mark : {"AT", ":T"}) {
        restart();
        line(5, 3, 8, ' ', mark);
        EXPECT_EQ(NoteOns(sink), (Ons{{52, 3}, {67, 3}})) << mark;
    }
}

TEST_F(NotePlayerTest, AuditionUsesVoiceChannelsAndEnds) {
    const auto koron = notes.auditionNote(2, 3, 'K');
    ASSERT_TRUE(koron);
    EXPECT_EQ(koron->channel, 2);
    const auto sharp = notes.auditionNote(4, 3, 'D'); // the earlier one is stopped first
    EXPECT_EQ(sharp->note, 66);
    notes.endAudition();
    const std::vector<NoteEvent> expected = {
        {0, 'N', 62, 2, 127}, {0, 'F', 62, 2, 0}, {0, 'N', 66, 3, 127}, {0, 'F', 66, 3, 0}};
    EXPECT_EQ(NoteEvents(sink), expected);
    EXPECT_FALSE(notes.auditionNote(0, 3, ' '));
}

} // namespace
} // namespace tahrir::play
