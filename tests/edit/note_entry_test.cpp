// Note entry: pen keys, accidentals, key signature and the worked entry of one note.

#include "editor_fixture.h"

namespace tahrir::edit::test {

using NoteEntry = EditorTest;

TEST_F(NoteEntry, WorkedExampleEntersASoriMiAndGrowsTheScore) {
    load({"03  8    "});
    ASSERT_EQ(current(), 4);
    ASSERT_EQ(pen(), "03  8    ");
    const double y0 = editor->LineY[0];

    key(Key::Digit(6), kShift);
    EXPECT_EQ(penTrimmed(), "03  8");
    EXPECT_EQ(trimmed(4), "03  8");

    key(Key::Digit(3));
    EXPECT_EQ(penTrimmed(), "33  8");
    EXPECT_EQ(editor->labels[0].caption, "q");
    EXPECT_DOUBLE_EQ(editor->LineY[0], y0 - 4 - 1.5);
    EXPECT_EQ(editor->RCDTxt, pen()); // the closing step hands the pen to RCDTxt
    EXPECT_EQ(trimmed(4), "03  8");

    key(K('S'));
    EXPECT_EQ(penTrimmed(), "33  8S");
    EXPECT_EQ(editor->labels[0].caption, "<q");
    EXPECT_EQ(trimmed(4), "03  8");

    const int pagesBefore = doc.UndoIndex;
    key(Key::Enter);
    ASSERT_EQ(audio.notes.size(), 1u);
    EXPECT_EQ(audio.notes[0].step, 3);
    EXPECT_EQ(audio.notes[0].octave, 3);
    EXPECT_EQ(audio.notes[0].accidental, "  S");
    EXPECT_EQ(line(4), core::Scratch("33  8S"));
    EXPECT_EQ(doc.UndoIndex, pagesBefore + 1);
    EXPECT_EQ(last(), 5);
    EXPECT_EQ(current(), 5);
    EXPECT_EQ(line(5), line(4));

    key(Key::Digit(5));
    EXPECT_EQ(penTrimmed(), "53  8S"); // the sori is carried on
    EXPECT_TRUE(editor->lit.test(14));
    key(K('S')); // lit on the line under the cursor: takes the sori off
    EXPECT_EQ(penTrimmed(), "53  8");
    EXPECT_EQ(editor->labels[0].caption, "q");
}

TEST_F(NoteEntry, PitchKeysKeepTheOctaveAndRestKeyMakesARest) {
    load({"13  8    ", "03 12    "});
    const double y = editor->LineY[0];
    key(Key::Digit(7)); // up six steps, not down one
    EXPECT_EQ(penTrimmed(), "73  8");
    EXPECT_DOUBLE_EQ(editor->LineY[0], y - 3);
    key(Key::Grave);
    EXPECT_EQ(penTrimmed(), "03  8");
    EXPECT_EQ(editor->labels[0].caption, "D");

    key(Key::Right);
    key(Key::Digit(1)); // a rest of " 12" shows the dotted quarter at once
    EXPECT_EQ(editor->labels[0].caption, "q .");
    EXPECT_EQ(penTrimmed(), "13 12");
}

TEST_F(NoteEntry, OctaveZeroIsResetByAPitchKey) {
    load({"10  8    "});
    key(Key::Digit(2));
    EXPECT_EQ(penTrimmed(), "23  8");
}

TEST_F(NoteEntry, StaffStepsStopAtTheirLimits) {
    struct Case {
        const char* start;
        int key;
        const char* expected;
    };
    const Case cases[] = {
        {"75  8", Key::Up, "16  8"},       {"16  8", Key::Up, "16  8"},
        {"66  8", Key::Up, "66  8"},       {"65  8", Key::Up, "75  8"},
        {"70  8", Key::Up, "14  8"},       {"30  8", Key::Up, "30  8"},
        {"11  8", Key::Down, "11  8"},     {"12  8", Key::Down, "71  8"},
        {"31  8", Key::PageDown, "30  8"}, {"30  8", Key::PageDown, "30  8"},
        {"36  8", Key::PageUp, "36  8"},   {"35  8", Key::PageUp, "36  8"},
        {"03  8", Key::Up, "03  8"},       {"03  8", Key::PageUp, "03  8"},
    };
    for (const Case& c : cases) {
        load({c.start});
        key(c.key);
        EXPECT_EQ(penTrimmed(), c.expected) << c.start << " key " << c.key;
    }
    load({"35  8"});
    key(Key::PageUp, kCtrl); // Ctrl+Page Up is the same command
    EXPECT_EQ(penTrimmed(), "36  8");
}

TEST_F(NoteEntry, DurationKeysWriteTheWordAndTheCaption) {
    load({"03  8    ", "33  8    "});
    key(Key::Digit(3), kShift); // the rest glyph of "  3" has no dot
    EXPECT_EQ(penTrimmed(), "03  3");
    EXPECT_EQ(editor->labels[0].caption, "d");
    key(Key::Grave, kShift);
    EXPECT_EQ(penTrimmed(), "03 -1");
    key(Key::Right);
    key(Key::Digit(0), kShift);
    EXPECT_EQ(penTrimmed(), "33 32");
    EXPECT_EQ(editor->labels[0].caption, "w");
}

TEST_F(NoteEntry, AccidentalTypedButNotCommittedIsNotLit) {
    load({"33  8    "});
    key(K('K'));
    EXPECT_EQ(editor->labels[0].caption, "!q");
    key(K('K')); // still not lit: replaces instead of removing
    EXPECT_EQ(penTrimmed(), "33  8K");
    EXPECT_EQ(editor->labels[0].caption, "!q");
    key(K('D'));
    EXPECT_EQ(penTrimmed(), "33  8D");
    EXPECT_EQ(editor->labels[0].caption, "#q");
    key(Key::Enter);
    key(Key::Left);
    key(K('D')); // now lit
    EXPECT_EQ(penTrimmed(), "33  8");
    EXPECT_EQ(editor->labels[0].caption, "q");
    load({"03  8    "});
    key(K('S')); // a rest takes no accidental
    EXPECT_EQ(penTrimmed(), "03  8");
}

TEST_F(NoteEntry, MeasureAccidentalLinesAreInsertedAndRemoved) {
    load({"33  8    ", "43  8K   "});
    key(K('S'), kShift);
    EXPECT_EQ(trimmed(4), "ALL3S");
    EXPECT_EQ(current(), 4); // the cursor stands on the new line
    EXPECT_EQ(trimmed(5), "33  8");
    EXPECT_TRUE(editor->lit.test(17));
    EXPECT_TRUE(editor->lit.test(14));
    key(K('A')); // lit: takes the line away
    EXPECT_EQ(trimmed(4), "33  8");
    EXPECT_EQ(last(), 5);

    key(Key::Right);
    key(K('A')); // from the pen's own koron
    EXPECT_EQ(trimmed(5), "ALL4K");
    key(Key::Right);
    key(Key::Right);
    EXPECT_EQ(current(), 6);
    key(Key::Left);
    key(Key::Left);
    key(K('A')); // a blank accidental gives natural
    EXPECT_EQ(trimmed(4), "ALL3N");
}

TEST_F(NoteEntry, CtrlAccidentalWritesTheKeySignature) {
    load({"33  8    ", "03  8    "});
    key(K('K'), kCtrl);
    EXPECT_EQ(line(1).substr(0, 8), "  K    G");
    EXPECT_EQ(current(), 4); // AdvanceStep 0
    key(K('N'), kCtrl);
    EXPECT_EQ(line(1).substr(0, 8), "       G");
    key(Key::Right);
    key(K('S'), kCtrl); // a rest has no step
    EXPECT_EQ(line(1).substr(0, 8), "       G");
}

} // namespace tahrir::edit::test
