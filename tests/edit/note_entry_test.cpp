// Note entry: pen keys, accidentals and the key signature. The entry of a sori Mi key by
// key, its commit and its sound are checked through the type command (cli_type_checks.sh).

#include "editor_fixture.h"

namespace tahrir::edit::test {

using NoteEntry = EditorTest;

// Keys typed on a fresh score: the pen up to its last non-blank, and its caption.
TEST_F(NoteEntry, PenKeysWriteTheLineAndTheCaption) {
    struct Case {
        Lines body;
        std::vector<std::pair<int, int>> presses; // key and shift state
        const char* pen;
        const char* caption;
    };
    const int D = K('D'), S = K('S');
    const Case cases[] = {
        {{"13  8"}, {{Key::Digit(7), 0}}, "73  8", "q"}, // up six steps, not down one
        {{"13  8"}, {{Key::Grave, 0}}, "03  8", "D"},
        {{"10  8"}, {{Key::Digit(2), 0}}, "23  8", "q"}, // octave 0 is reset
        // A rest of " 12" shows the dotted quarter at once.
        {{"13  8", "03 12"}, {{Key::Right, 0}, {Key::Digit(1), 0}}, "13 12", "q ."},
        {{"03  8"}, {{Key::Digit(3), kShift}}, "03  3", "d"}, // the rest glyph has no dot
        {{"03  8"}, {{Key::Grave, kShift}}, "03 -1", nullptr},
        {{"33  8"}, {{Key::Digit(0), kShift}}, "33 32", "w"},
        {{"33  8"}, {{S, 0}}, "33  8S", "<q"},
        // An accidental typed but not committed is not lit: a second press writes it again.
        {{"33  8"}, {{K('K'), 0}, {K('K'), 0}}, "33  8K", "!q"},
        {{"33  8"}, {{K('K'), 0}, {D, 0}}, "33  8D", "#q"},
        {{"33  8"}, {{D, 0}, {Key::Enter, 0}, {Key::Left, 0}, {D, 0}}, "33  8", "q"}, // lit
        {{"03  8"}, {{S, 0}}, "03  8", "D"}, // a rest takes no accidental
    };
    for (const Case& c : cases) {
        load(c.body);
        for (const auto& [code, shift] : c.presses)
            key(code, shift);
        EXPECT_EQ(penTrimmed(), c.pen) << c.pen;
        EXPECT_EQ(c.caption ? caption() : "", c.caption ? c.caption : "") << c.pen;
    }
    load({"13  8"});
    const double y = editor->state().LineY[0];
    key(Key::Digit(7));
    EXPECT_DOUBLE_EQ(editor->state().LineY[0], y - 3); // the pen is drawn where it stands
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
