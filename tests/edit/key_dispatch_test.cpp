// Decoding a key press: head-line protection, shift states, movement and the closing step.

#include "editor_fixture.h"

namespace tahrir::edit::test {

using KeyDispatch = EditorTest;

TEST_F(KeyDispatch, ThePenIsDrawnWhereItStands) {
    load({"13  8"});
    const double y = editor->state().LineY[0];
    key(Key::Digit(7));
    EXPECT_DOUBLE_EQ(editor->state().LineY[0], y - 3);
}

TEST_F(KeyDispatch, CtrlShiftIsPlainInTheEditorAndIgnoredInTheViewer) {
    load({"13  8    ", "23  8    "});
    host.answers = {"100"};
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
    key(Key::Digit(5), kShift); // listed but leaves IndexStale clear
    EXPECT_EQ(penTrimmed(), "13  6");
    EXPECT_EQ(editor->state().LineStateRuns, runs);
    key(Key::Right); // movement marks the index stale
    EXPECT_EQ(editor->state().LineStateRuns, runs + 1);
}

} // namespace tahrir::edit::test
