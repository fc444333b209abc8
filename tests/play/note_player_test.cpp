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
    void line(int step, int octave, int duration, char accidental = ' ', const char* mark = "  ") {
        notes.PlayNoteLine(step, octave, duration, accidental, mark, 10);
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

TEST(StepPitchTable, BuildsOctavesFromTheBase) {
    StepPitchTable table;
    EXPECT_EQ(table.at(1), 24);
    EXPECT_EQ(table.at(22), 60); // Do of octave 3
    EXPECT_EQ(table.at(27), 69); // La of octave 3
    EXPECT_EQ(table.at(29), 72);
    EXPECT_EQ(table.at(50), 108); // the last entry the octaves reach
    EXPECT_EQ(table.at(0), std::nullopt);
    EXPECT_EQ(table.at(59), std::nullopt);
    table.rebuild(TransposeCentre + 2); // two semitones up
    EXPECT_EQ(table.at(22), 62);
}

TEST_F(NotePlayerTest, VoiceChannelFollowsAccidentalSignatureAndMeasure) {
    line(2, 3, 8, 'K'); // koron Re
    EXPECT_EQ(sink.messages().front(), 0x003C3E92u);
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

TEST_F(NotePlayerTest, NewNoteStartsBeforeOldStopsAndRepeatsAreNotStopped) {
    line(1, 3, 8);
    line(2, 3, 8);
    line(2, 3, 8);      // the same key again: a new attack, no note off
    line(2, 3, 8, 'K'); // the same key on the koron voice is another note
    line(0, 3, 8);      // a rest stops the sounding note when it starts
    const std::vector<NoteEvent> expected = {
        {0, 'N', 60, 3, 60}, {1, 'N', 62, 3, 60}, {1, 'F', 60, 3, 0}, {2, 'N', 62, 3, 60},
        {3, 'N', 62, 2, 60}, {3, 'F', 62, 3, 0},  {4, 'F', 62, 2, 0}};
    EXPECT_EQ(NoteEvents(sink), expected);
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
    notes.PlayNoteLine(1, 3, 8, ' ', "TI", 10);
    notes.PlayNoteLine(1, 3, 4, ' ', "  ", 11);
    notes.PlayNoteLine(2, 3, 8, ' ', "TI", 12);
    notes.PlayNoteLine(3, 3, 8, ' ', "  ", 13);
    const std::vector<NoteEvent> expected = {{0, 'N', 60, 3, 60},
                                             {1.5, 'N', 62, 3, 60},
                                             {1.5, 'F', 60, 3, 0},
                                             {2.5, 'N', 64, 3, 60},
                                             {2.5, 'F', 62, 3, 0}};
    EXPECT_EQ(NoteEvents(sink), expected);
    EXPECT_EQ(notes.eventLog().text(),
              "0,60,3,60\r\n1.5,60,3,0\r\n0,62,3,60\r\n1,62,3,0\r\n0,64,3,60\r\n1,64,3,0\r\n");
}

TEST_F(NotePlayerTest, EventLogPutsRestsInFrontOfTheNextNote) {
    line(2, 3, 4, 'K');
    line(0, 3, 8);
    line(0, 3, -1); // a barline: a silence of a ten-millionth of a second
    line(3, 3, 8, 'S');
    const auto& r = notes.eventLog().records();
    ASSERT_EQ(r.size(), 4u);
    EXPECT_DOUBLE_EQ(r[1].seconds, 0.5);
    EXPECT_NEAR(r[2].seconds, 1.0000001, 1e-12);
    EXPECT_EQ(r[2].channel, 4);
    EXPECT_EQ(FormatLogNumber(0.0000001), "1E-07");
    EXPECT_EQ(FormatLogNumber(0.125), "0.125");
}

TEST_F(NotePlayerTest, FixedExpansionsKeepTheirFractions) {
    line(3, 3, 8, ' ', "D "); // dorrab 0.14, 0.14, 0.78: runs 6% long
    line(1, 3, 8);
    auto t = OnTimes(sink);
    ASSERT_EQ(t.size(), 4u);
    EXPECT_NEAR(t[1], 0.14, 1e-9);
    EXPECT_NEAR(t[2], 0.28, 1e-9);
    EXPECT_NEAR(t[3], 1.06, 1e-9);

    restart();
    line(3, 3, 8, ' ', "M "); // mordent with the upper neighbour
    line(3, 3, 8, ' ', ". "); // staccato: half sounds, half is silence
    line(1, 3, 8);
    EXPECT_EQ(NoteOns(sink), (Ons{{64, 3}, {65, 3}, {64, 3}, {64, 3}, {60, 3}}));
    t = OnTimes(sink);
    EXPECT_NEAR(t[3], 1.06, 1e-9);
    EXPECT_NEAR(t[4], 2.06, 1e-9);
    const auto events = NoteEvents(sink);
    EXPECT_NEAR(events[events.size() - 2].seconds, 1.56, 1e-9); // staccato stops half way
}

TEST_F(NotePlayerTest, IntervalMordentPlaysTheLowerCompanion) {
    line(5, 3, 8, ' ', "2M"); // Sol with Mi below
    line(1, 3, 8);
    EXPECT_EQ(NoteOns(sink), (Ons{{64, 3}, {67, 3}, {64, 3}, {60, 3}}));
    EXPECT_NEAR(OnTimes(sink)[3], 0.98, 1e-9);
    // Every first character from "1" to "K" makes the interval form, ":" included; its
    // companion is step - Val(":M") = step - 0, the note itself.
    sink.clear();
    line(5, 3, 8, ' ', ":M");
    EXPECT_EQ(NoteOns(sink), (Ons{{67, 3}, {67, 3}, {67, 3}}));
    EXPECT_NEAR(OnTimes(sink)[2] - OnTimes(sink)[0], 0.2, 1e-9); // 0.1 and 0.1, then 0.78
}

TEST_F(NotePlayerTest, TrillAndRizFillFourFifthsOfTheNote) {
    line(1, 3, 1, ' ', "TR"); // a 32nd: N = 0.5 is held at 1, unit 0.05 s
    line(2, 3, 8);
    EXPECT_EQ(NoteOns(sink), (Ons{{60, 3}, {62, 3}, {62, 3}}));
    EXPECT_NEAR(OnTimes(sink)[1], 0.05, 1e-9);
    EXPECT_NEAR(OnTimes(sink)[2], 0.1, 1e-9);

    restart();
    state.KeySignature[7] = 'B';
    line(6, 3, 8, ' ', "TB"); // trill with the flat of the next step
    line(6, 3, 8, ' ', "T "); // riz: four rounds of two 0.1 s strokes
    line(1, 3, 8);
    const auto ons = NoteOns(sink);
    ASSERT_EQ(ons.size(), 17u);
    EXPECT_EQ(ons[1], std::make_pair(70, 3));
    EXPECT_NEAR(OnTimes(sink)[8], 0.8, 1e-9);
    EXPECT_NEAR(OnTimes(sink)[16], 1.6, 1e-9);
}

TEST_F(NotePlayerTest, TwoNotesTogetherLogBothAtOnce) {
    line(3, 3, 8, ' ', "3T"); // Mi with Do
    line(2, 3, 8);
    const std::vector<NoteEvent> expected = {{0, 'N', 60, 3, 60}, {0, 'N', 64, 3, 60},
                                             {1, 'F', 60, 3, 0},  {1, 'F', 60, 3, 0},
                                             {1, 'N', 62, 3, 60}, {1, 'F', 60, 3, 0}};
    EXPECT_EQ(NoteEvents(sink), expected);
    EXPECT_EQ(notes.eventLog().text(),
              "0,60,3,60\r\n0,64,3,60\r\n1,60,3,0\r\n0,64,3,0\r\n0,62,3,60\r\n1,62,3,0\r\n");
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
