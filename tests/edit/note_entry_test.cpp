// Note entry: pen keys, accidentals and the key signature. The entry of a sori Mi key by
// key, its commit and its sound are checked through the type command (cli_type_checks.sh).

#include "editor_fixture.h"

namespace tahrir::edit::test {

using NoteEntry = EditorTest;

TEST_F(NoteEntry, PitchKeysKeepTheOctaveAndRestKeyMakesARest) {
    load({"13  8    ", "03 12    "});
    const double y = editor->state().LineY[0];
    EXPECT_EQ(typed(Key::Digit(7)), "73  8"); // up six steps, not down one
    EXPECT_DOUBLE_EQ(editor->state().LineY[0], y - 3);
    EXPECT_EQ(typed(Key::Grave), "03  8");
    EXPECT_EQ(caption(), "D");

    key(Key::Right);
    EXPECT_EQ(typed(Key::Digit(1)), "13 12");
    EXPECT_EQ(caption(), "q ."); // a rest of " 12" shows the dotted quarter at once

    load({"10  8    "});
    EXPECT_EQ(typed(Key::Digit(2)), "23  8"); // octave 0 is reset
}

TEST_F(NoteEntry, StaffStepsStopAtTheirLimits) {
    struct Case {
        const char* start;
        int key, shift;
        const char* expected;
    };
    const Case cases[] = {
        {"75  8", Key::Up, 0, "16  8"},         {"16  8", Key::Up, 0, "16  8"},
        {"66  8", Key::Up, 0, "66  8"},         {"65  8", Key::Up, 0, "75  8"},
        {"70  8", Key::Up, 0, "14  8"},         {"30  8", Key::Up, 0, "30  8"},
        {"11  8", Key::Down, 0, "11  8"},       {"12  8", Key::Down, 0, "71  8"},
        {"31  8", Key::PageDown, 0, "30  8"},   {"30  8", Key::PageDown, 0, "30  8"},
        {"36  8", Key::PageUp, 0, "36  8"},     {"35  8", Key::PageUp, 0, "36  8"},
        {"03  8", Key::Up, 0, "03  8"},         {"03  8", Key::PageUp, 0, "03  8"},
        {"35  8", Key::PageUp, kCtrl, "36  8"}, // Ctrl+Page Up is the same command
    };
    for (const Case& c : cases) {
        load({c.start});
        EXPECT_EQ(typed(c.key, c.shift), c.expected) << c.start << " key " << c.key;
    }
}

TEST_F(NoteEntry, DurationKeysWriteTheWordAndTheCaption) {
    load({"03  8    ", "33  8    "});
    EXPECT_EQ(typed(Key::Digit(3), kShift), "03  3");
    EXPECT_EQ(caption(), "d"); // the rest glyph of "  3" has no dot
    EXPECT_EQ(typed(Key::Grave, kShift), "03 -1");
    key(Key::Right);
    EXPECT_EQ(typed(Key::Digit(0), kShift), "33 32");
    EXPECT_EQ(caption(), "w");
}

TEST_F(NoteEntry, AccidentalTypedButNotCommittedIsNotLit) {
    load({"33  8    "});
    EXPECT_EQ(typed(K('S')), "33  8S");
    EXPECT_EQ(caption(), "<q");
    EXPECT_EQ(typed(K('K')), "33  8K");
    EXPECT_EQ(typed(K('K')), "33  8K"); // still not lit: replaces instead of removing
    EXPECT_EQ(caption(), "!q");
    EXPECT_EQ(typed(K('D')), "33  8D");
    EXPECT_EQ(caption(), "#q");
    keys({Key::Enter, Key::Left});
    EXPECT_EQ(typed(K('D')), "33  8"); // now lit
    EXPECT_EQ(caption(), "q");
    load({"03  8    "});
    EXPECT_EQ(typed(K('S')), "03  8"); // a rest takes no accidental
}

TEST_F(NoteEntry, MeasureAccidentalLinesAreInsertedAndRemoved) {
    load({"33  8    ", "43  8K   "});
    key(K('S'), kShift);
    EXPECT_EQ(trimmed(4, 5), (Lines{"ALL3S", "33  8"}));
    EXPECT_EQ(current(), 4); // the cursor stands on the new line
    EXPECT_TRUE(editor->state().lit.test(17));
    EXPECT_TRUE(editor->state().lit.test(14));
    key(K('A')); // lit: takes the line away
    EXPECT_EQ(trimmed(4), "33  8");
    EXPECT_EQ(last(), 5);

    keys({Key::Right, K('A')}); // from the pen's own koron
    EXPECT_EQ(trimmed(5), "ALL4K");
    keys({Key::Right, Key::Right});
    EXPECT_EQ(current(), 6);
    keys({Key::Left, Key::Left, K('A')}); // a blank accidental gives natural
    EXPECT_EQ(trimmed(4), "ALL3N");
}

TEST_F(NoteEntry, CtrlAccidentalWritesTheKeySignature) {
    load({"33  8    ", "03  8    "});
    ctrl('K');
    EXPECT_EQ(keySignature(), "  K    G");
    EXPECT_EQ(current(), 4); // AdvanceStep 0
    ctrl('N');
    EXPECT_EQ(keySignature(), "       G");
    key(Key::Right);
    ctrl('S'); // a rest has no step
    EXPECT_EQ(keySignature(), "       G");
}

} // namespace tahrir::edit::test
