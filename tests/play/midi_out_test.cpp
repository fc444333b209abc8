#include <gtest/gtest.h>

#include "play/midi_out.h"

namespace tahrir::play {
namespace {

TEST(MidiMessages, PackWithoutMasking) {
    // The words of ordinary messages are checked against the golden run.
    // A key above 127 spills into the velocity byte: 130 * 256 = 0x8200.
    EXPECT_EQ(PackNoteOn(130, 60, 3), 0x003C8293u);
    // A channel above 15 spills into the status nibble: 144 + 16 = 0xA0.
    EXPECT_EQ(PackNoteOn(60, 1, 16), 0x00013CA0u);
}

TEST(MidiMessages, UnpackGivesWireBytesByStatus) {
    const WireMessage on = Unpack(0x003C3E92u);
    ASSERT_EQ(on.length, 3);
    EXPECT_EQ((std::vector<int>(on.bytes, on.bytes + 3)), (std::vector<int>{0x92, 0x3E, 0x3C}));
    // Program change has one data byte, a real-time status stands alone, no status: nothing.
    for (const auto& [word, length] :
         {std::pair{0x000049C3u, 2}, {0x000000ECu, 3}, {0x000048FCu, 1}, {0x00000042u, 0}})
        EXPECT_EQ(Unpack(word).length, length) << std::hex << word;
    EXPECT_EQ(Unpack(0x003C8293u).bytes[1], 0x02); // data bytes never carry bit 7
}

class MidiOutTest : public ::testing::Test {
protected:
    RecordingSink sink;
    MidiOut midi{&sink};
};

TEST_F(MidiOutTest, NotesPassOnlyThroughTheGates) {
    midi.MidiNoteOn(60, 60, 3); // no instrument chosen yet
    midi.AllNotesOff();
    EXPECT_TRUE(sink.entries().empty());
    midi.CountInActive = true;
    midi.MidiNoteOn(69, 60, 6);
    EXPECT_EQ(sink.messages().size(), 1u);
    midi.CountInActive = false;
    midi.MidiOutputOn = true;
    sink.clear();
    midi.AllNotesOff();
    const auto& m = sink.messages();
    ASSERT_EQ(m.size(), 128u * 5u);
    // Channel innermost, channel 6 left alone.
    EXPECT_EQ(m[0], PackNoteOff(0, 1));
    EXPECT_EQ(m[4], PackNoteOff(0, 5));
    EXPECT_EQ(m[5], PackNoteOff(1, 1));
    EXPECT_EQ(m.back(), PackNoteOff(127, 5));
}

} // namespace
} // namespace tahrir::play
