#include <gtest/gtest.h>

#include "play/note_player.h"
#include "play_test_util.h"

namespace tahrir::play {
namespace {

using testing::NoteEvent;
using testing::NoteEvents;

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
    RecordingSink sink;
    MidiOut midi{&sink};
    RunState state;
    PlayControls controls;
    NotePlayer notes;
};

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
