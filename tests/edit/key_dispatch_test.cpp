// Decoding a key press: head-line protection, shift states, movement and the closing step.

#include "editor_fixture.h"

namespace tahrir::edit::test {

using KeyDispatch = EditorTest;

TEST_F(KeyDispatch, HeadLinesTakeOnlyRhythmTempoAndMovementKeys) {
    load({"13  8    "});
    ASSERT_EQ(moved(Key::Home), 2);
    const std::string before = line(2);
    keys({K('S'), Key::Del});
    key(Key::F(2), kCtrl);
    editor->paletteClick(19, 0);
    EXPECT_EQ(line(2), before);
    EXPECT_EQ(last(), 4);
    EXPECT_TRUE(host.titles.empty());

    answer("90");
    key(K('T')); // line 2 is the tempo line: its dialog opens
    ASSERT_EQ(host.titles, Lines{"Tempo"});
    EXPECT_EQ(trimmed(2), "TEMPO90");
    EXPECT_DOUBLE_EQ(doc.InitialTempo, 90);

    key(Key::Left);
    EXPECT_EQ(moved(Key::Left), 2); // stops at line 2
    EXPECT_EQ(editor->state().KeyOutcome, Outcome::PenToRecord);
}

TEST_F(KeyDispatch, RightStopsAtTheLastLineAndEndSkipsUndrawnLines) {
    load({"13  8    ", "23  8    "});
    key(Key::End);
    EXPECT_EQ(moved(Key::Right), 5);
    EXPECT_EQ(editor->state().KeyOutcome, Outcome::PenToRecord);
    // Lines that drew nothing: End walks back, never past line 4.
    editor->positionsChanged(core::PositionTable{});
    EXPECT_EQ(moved(Key::End), 4);
}

TEST_F(KeyDispatch, MovingDiscardsThePenAndResynchronises) {
    load({"13  8    ", "23  8    "});
    EXPECT_EQ(typed(Key::Digit(6)), "63  8");
    key(Key::Right);
    EXPECT_EQ(typed(Key::Left), "13  8");
    EXPECT_EQ(trimmed(4), "13  8");
    EXPECT_EQ(editor->state().RCDTxt, line(4));
    EXPECT_EQ(editor->state().KeyOutcome, Outcome::Resynchronise);
}

TEST_F(KeyDispatch, RowMovesFindTheLineStraightAboveOrBelow) {
    // Nineteen symbols a row in the plain layout: line 4 and line 23 share an x.
    load(Lines(38, "13  8    "));
    EXPECT_EQ(moved(Key::Down, kShift), 23);
    EXPECT_EQ(moved(Key::Down, kCtrl), 40); // no third row: stops at LastLine - 1
    EXPECT_EQ(moved(Key::Home, kShift), 2);
    repeat(25, Key::Right);
    EXPECT_EQ(current(), 27);
    EXPECT_EQ(moved(Key::Up, kShift), 9); // x 17: line 9 at x 20 is the first within 3 units
}

TEST_F(KeyDispatch, CtrlShiftIsPlainInTheEditorAndIgnoredInTheViewer) {
    load({"13  8    ", "23  8    "});
    answer("100");
    key(K('T'), kShift | kCtrl); // plain T: a tempo line with its dialog
    EXPECT_EQ(trimmed(4), "TEMPO100");
    EXPECT_EQ(last(), 6);

    editor->editorClick();
    ASSERT_EQ(editor->state().EditMode, Mode::Viewer);
    const int scroll = editor->state().ScrollValue;
    key(Key::Down, kShift | kCtrl);
    EXPECT_EQ(editor->state().ScrollValue, scroll);
    key(Key::Down);
    EXPECT_EQ(editor->state().ScrollValue, std::min(scroll + 1, editor->state().ScrollMax));
    key(Key::Left); // the viewer's Left is the live tempo
    EXPECT_EQ(editor->state().LiveTempo, 59);
    EXPECT_EQ(current(), 5);
}

TEST_F(KeyDispatch, UnlistedKeysCostNothing) {
    load({"13  8    ", "23  8    "});
    const int runs = editor->state().LineStateRuns;
    key(K('Q'));
    ctrl('J');
    EXPECT_EQ(typed(Key::Digit(5), kShift), "13  6"); // listed but leaves IndexStale clear
    EXPECT_EQ(editor->state().LineStateRuns, runs);
    key(Key::Right); // movement marks the index stale
    EXPECT_EQ(editor->state().LineStateRuns, runs + 1);
}

TEST_F(KeyDispatch, EnteringTheEditorClampsTheCursorAndBlanksBeams) {
    load({"13  8 C  ", "TEMPO 80C", "L-word C "});
    editor->editorClick();
    doc.Sheet.CurrentLine = 99;
    doc.Sheet[1].setField(7, "K");
    editor->editorClick();
    EXPECT_EQ(current(), 4);
    EXPECT_EQ(line(4).substr(0, 9), "13  8    ");
    EXPECT_EQ(trimmed(5, 6), (Lines{"TEMPO 80C", "L-word C"}));
    EXPECT_EQ(keySignature(), "      KG"); // the key signature's Si stays
}

} // namespace tahrir::edit::test
