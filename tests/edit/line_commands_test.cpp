// The insert, commit and delete commands and their limits.

#include "editor_fixture.h"

namespace tahrir::edit::test {

using LineCommands = EditorTest;

const Lines kThree = {"13  8    ", "23  8    ", "33  8    "};

TEST_F(LineCommands, CommitAdvancesAndGrowsOnlyFromTheLastLine) {
    load({"13  8    ", "23  8    "});
    keys({Key::Digit(5), Key::Enter});
    EXPECT_EQ(trimmed(4), "53  8");
    EXPECT_EQ(cursor(), Pair(5, 5));
    EXPECT_EQ(penTrimmed(), "23  8"); // the pen follows the cursor
    key(Key::Enter);
    EXPECT_EQ(cursor(), Pair(6, 6));
    EXPECT_EQ(line(6), line(5));
    key(Key::Enter); // the same note again without another key
    EXPECT_EQ(last(), 7);
    EXPECT_EQ(trimmed(7), "23  8");
    EXPECT_TRUE(doc.DirtyFlag);
}

TEST_F(LineCommands, CommitOnTheLastOfAllLinesSaysMemoryFull) {
    load(Lines(core::MaxLines - 3, "13  8    "));
    key(Key::End);
    ASSERT_EQ(cursor(), Pair(core::MaxLines, core::MaxLines));
    keys({Key::Digit(6), Key::Enter});
    EXPECT_EQ(host.messages, Lines{"Memory full!"});
    EXPECT_EQ(trimmed(core::MaxLines), "63  8"); // stored before the test
    EXPECT_EQ(cursor(), Pair(core::MaxLines, core::MaxLines));

    key(Key::Ins); // nothing changes
    EXPECT_EQ(host.messages.size(), 2u);
    EXPECT_EQ(last(), core::MaxLines);
    EXPECT_EQ(trimmed(core::MaxLines), "63  8");
}

TEST_F(LineCommands, InsertKeepsTheCursorOnTheOldLineOrStandsOnTheNewOne) {
    load({"13  8    ", "23  8    "});
    keys({Key::Right, Key::Digit(7), Key::Ins});
    EXPECT_EQ(trimmed(5, 6), (Lines{"73  8", "23  8"}));
    EXPECT_EQ(cursor(), Pair(6, 6)); // the old last line, one further down
    EXPECT_EQ(penTrimmed(), "23  8");
    EXPECT_EQ(sounded(), std::vector<int>{7});

    key(Key::F(2)); // a directive goes in before the cursor line
    EXPECT_EQ(trimmed(6), "REP{");
    EXPECT_EQ(current(), 7);
    EXPECT_EQ(sounded(), (std::vector<int>{7, 2})); // the pen: the note under the cursor
}

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

TEST_F(LineCommands, DeleteNeverTakesLineFour) {
    load({"13  8    "});
    key(Key::Del);
    EXPECT_EQ(last(), 4);
    EXPECT_EQ(trimmed(4), "13  8");

    load(kThree);
    ctrl('A');
    EXPECT_EQ(editor->state().SelStart, 4);
    EXPECT_EQ(editor->state().labels[4].colour, ColourBlue);
    key(Key::Del);
    EXPECT_EQ(last(), 4);
    EXPECT_EQ(trimmed(4), "13  8");
    EXPECT_EQ(sel(), Pair(0, 0));

    load(kThree);
    keys({Key::End, Key::Del});
    EXPECT_EQ(cursor(), Pair(5, 5)); // clamped to the new last line
    key(Key::Backspace);             // the line before the cursor
    EXPECT_EQ(cursor(), Pair(4, 4));
    EXPECT_EQ(trimmed(4), "23  8");
}

TEST_F(LineCommands, SnapshotCutsLongLinesInTheSheet) {
    load({"13  8    ", std::string(40, 'x')});
    EXPECT_EQ(line(5).size(), 32u); // the first page already cut it
    EXPECT_EQ(undo.readRecord(1, 0), core::Scratch("5"));
    EXPECT_EQ(undo.readRecord(1, 4), core::Scratch("13  8"));
}

} // namespace tahrir::edit::test
