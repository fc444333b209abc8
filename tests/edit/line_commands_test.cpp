// The insert, commit and delete commands and their limits.

#include "editor_fixture.h"

namespace tahrir::edit::test {

using LineCommands = EditorTest;

namespace {
std::vector<std::string> Notes(int count) {
    return std::vector<std::string>(static_cast<std::size_t>(count), "13  8    ");
}
} // namespace

TEST_F(LineCommands, CommitAdvancesAndGrowsOnlyFromTheLastLine) {
    load({"13  8    ", "23  8    "});
    key(Key::Digit(5));
    key(Key::Enter);
    EXPECT_EQ(trimmed(4), "53  8");
    EXPECT_EQ(current(), 5);
    EXPECT_EQ(last(), 5);
    EXPECT_EQ(penTrimmed(), "23  8"); // the pen follows the cursor
    key(Key::Enter);
    EXPECT_EQ(last(), 6);
    EXPECT_EQ(current(), 6);
    EXPECT_EQ(line(6), line(5));
    key(Key::Enter); // the same note again without another key
    EXPECT_EQ(last(), 7);
    EXPECT_EQ(trimmed(7), "23  8");
    EXPECT_TRUE(doc.DirtyFlag);
}

TEST_F(LineCommands, CommitOnTheLastOfAllLinesSaysMemoryFull) {
    load(Notes(core::MaxLines - 3));
    ASSERT_EQ(last(), core::MaxLines);
    key(Key::End);
    ASSERT_EQ(current(), core::MaxLines);
    key(Key::Digit(6));
    key(Key::Enter);
    EXPECT_EQ(host.messages, std::vector<std::string>{"Memory full!"});
    EXPECT_EQ(trimmed(core::MaxLines), "63  8"); // stored before the test
    EXPECT_EQ(current(), core::MaxLines);
    EXPECT_EQ(last(), core::MaxLines);

    key(Key::Ins); // nothing changes
    EXPECT_EQ(host.messages.size(), 2u);
    EXPECT_EQ(last(), core::MaxLines);
    EXPECT_EQ(trimmed(core::MaxLines), "63  8");
}

TEST_F(LineCommands, InsertKeepsTheCursorOnTheOldLineOrStandsOnTheNewOne) {
    load({"13  8    ", "23  8    "});
    key(Key::Right);
    key(Key::Digit(7));
    key(Key::Ins);
    EXPECT_EQ(trimmed(5), "73  8");
    EXPECT_EQ(trimmed(6), "23  8");
    EXPECT_EQ(last(), 6);
    EXPECT_EQ(current(), 6); // the old last line, one further down
    EXPECT_EQ(penTrimmed(), "23  8");
    ASSERT_EQ(audio.notes.size(), 1u);
    EXPECT_EQ(audio.notes[0].step, 7);

    key(Key::F(2)); // a directive goes in before the cursor line
    EXPECT_EQ(trimmed(6), "REP{");
    EXPECT_EQ(current(), 7);
    ASSERT_EQ(audio.notes.size(), 2u); // the pen is sounded: the note under the cursor
    EXPECT_EQ(audio.notes[1].step, 2);
    EXPECT_EQ(audio.notes[1].pitched, 1);
}

// Both line commands sound the pen (element 0), not the text they store from RCDTxt.
TEST_F(LineCommands, CommandsSoundThePenNotTheStoredLine) {
    load({"13  8    ", "43  8S   ", "L^words"});
    key(Key::Right);
    key(K('T')); // inserts "TEMPO 60" before the sori Fa: the Fa sounds
    ASSERT_EQ(audio.notes.size(), 1u);
    EXPECT_EQ(audio.notes[0].step, 4);
    EXPECT_EQ(audio.notes[0].accidental, "  S"); // a blank, column 7, column 6
    EXPECT_EQ(trimmed(5), "43  8S"); // the cancelled tempo box took the line away again
    ASSERT_EQ(current(), 5);

    key(K('D'), kCtrl); // the key signature commits the pen: the Fa sounds again
    ASSERT_EQ(audio.notes.size(), 2u);
    EXPECT_EQ(audio.notes[1].step, 4);

    key(K('D'), kShift); // the pen itself becomes "ALL4D": nothing pitched is sounded
    ASSERT_EQ(audio.notes.size(), 3u);
    EXPECT_EQ(audio.notes[2].pitched, 0);
    EXPECT_EQ(trimmed(5), "ALL4D");

    key(Key::End); // a text line: the tool's text is stored, the pen has no pitch
    editor->textToolApply("la", 1);
    ASSERT_EQ(audio.notes.size(), 4u);
    EXPECT_EQ(audio.notes[3].pitched, 0);
}

TEST_F(LineCommands, DeleteNeverTakesLineFour) {
    load({"13  8    "});
    key(Key::Del);
    EXPECT_EQ(last(), 4);
    EXPECT_EQ(trimmed(4), "13  8");

    load({"13  8    ", "23  8    ", "33  8    "});
    key(K('A'), kCtrl);
    EXPECT_EQ(editor->SelStart, 4);
    EXPECT_EQ(editor->labels[4].colour, ColourBlue);
    key(Key::Del);
    EXPECT_EQ(last(), 4);
    EXPECT_EQ(trimmed(4), "13  8");
    EXPECT_EQ(editor->SelStart, 0);
    EXPECT_EQ(editor->SelEnd, 0);

    load({"13  8    ", "23  8    ", "33  8    "});
    key(Key::End);
    key(Key::Del);
    EXPECT_EQ(last(), 5);
    EXPECT_EQ(current(), 5); // clamped to the new last line
    key(Key::Backspace);     // the line before the cursor
    EXPECT_EQ(last(), 4);
    EXPECT_EQ(trimmed(4), "23  8");
    EXPECT_EQ(current(), 4);
}

TEST_F(LineCommands, SnapshotCutsLongLinesInTheSheet) {
    load({"13  8    ", std::string(40, 'x')});
    EXPECT_EQ(line(5).size(), 32u); // the first page already cut it
    EXPECT_EQ(undo.readRecord(1, 0), core::Scratch("5"));
    EXPECT_EQ(undo.readRecord(1, 4), core::Scratch("13  8"));
}

} // namespace tahrir::edit::test
