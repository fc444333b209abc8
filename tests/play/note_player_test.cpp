#include <gtest/gtest.h>

#include "play/note_player.h"
#include "play_test_util.h"

namespace tahrir::play {
namespace {

using testing::NoteEvent;
using testing::NoteEvents;

TEST(NotePlayerTest, AuditionUsesVoiceChannelsAndEnds) {
    RecordingSink sink;
    MidiOut midi{&sink};
    midi.MidiOutputOn = true;
    RunState state;
    PlayControls controls;
    NotePlayer notes(midi, state, controls);
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
