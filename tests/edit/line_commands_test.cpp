// The line commands beyond the key scripts: beams, the sounded pen, the undo snapshot.

#include "editor_fixture.h"

namespace tahrir::edit::test {

using LineCommands = EditorTest;

TEST_F(LineCommands, BeamsFollowEveryChangeOfTheSheet) {
    // Four beamed eighths; an eighth inserted, then a line deleted: the codes are written
    // anew each time, never left blank behind the change.
    load({"13  4    ", "23  4    ", "33  4    ", "43  4    "});
    const auto codes = [&] {
        std::string out;
        for (int i = 4; i <= last(); ++i) out += line(i).size() > 6 ? line(i)[6] : ' ';
        return out;
    };
    keys({Key::Right, Key::Digit(7), Key::Ins});
    EXPECT_EQ(codes(), "CcCc ");
    key(Key::Del);
    EXPECT_EQ(codes(), "CcCc");
}

// Both line commands sound the pen (element 0), not the text they store from RCDTxt.
TEST_F(LineCommands, CommandsSoundThePenNotTheStoredLine) {
    load({"13  8    ", "43  8S   ", "L^words"});
    keys({Key::Right, K('T')}); // inserts "TEMPO 60" before the sori Fa: the Fa sounds
    EXPECT_EQ(sounded(), std::vector<int>{4});
    EXPECT_EQ(audio.notes[0].accidental, "  S"); // a blank, column 7, column 6
    // The cancelled tempo box took the line away again.
    EXPECT_EQ(trimmed(5), "43  8S");
    ASSERT_EQ(current(), 5);
    ctrl('D');           // the key signature commits the pen: the Fa sounds again
    key(K('D'), kShift); // the pen itself becomes "ALL4D": nothing pitched is sounded
    EXPECT_EQ(trimmed(5), "ALL4D");
    key(Key::End); // a text line: the tool's text is stored, the pen has no pitch
    editor->textToolApply("la", 1);
    EXPECT_EQ(sounded(), (std::vector<int>{4, 4, 0, 0}));
}

TEST_F(LineCommands, SnapshotCutsLongLinesInTheSheet) {
    load({"13  8    ", std::string(40, 'x')});
    EXPECT_EQ(line(5).size(), 32u); // the first page already cut it
    EXPECT_EQ(undo.readRecord(1, 0), core::Scratch("5"));
    EXPECT_EQ(undo.readRecord(1, 4), core::Scratch("13  8"));
}

} // namespace tahrir::edit::test
