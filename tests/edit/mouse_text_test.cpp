// Bands, and the lines that the text and command tools build.

#include "editor_fixture.h"

namespace tahrir::edit::test {

using MouseText = EditorTest;

TEST_F(MouseText, BandsSelectFromTheFirstToTheLastLabelInside) {
    load({"13  8", "23  8", "33  8", "43  8"});
    editor->picMouseDown(-50, -50);
    editor->picMouseMove(-40, -40, true);
    editor->picMouseUp();
    EXPECT_EQ(sel(), Pair(0, 0));
    EXPECT_FALSE(editor->state().lit.test(68));

    // Drawn from the right to the left: the band still spans both labels.
    const double ax = editor->state().LineX[4], ay = editor->state().LineY[4];
    const double bx = editor->state().LineX[6], by = editor->state().LineY[6];
    editor->picMouseDown(bx + 0.5, by + 0.5);
    editor->picMouseMove(ax - 0.5, ay - 0.5, true);
    EXPECT_TRUE(editor->state().band.visible);
    editor->picMouseUp();
    EXPECT_FALSE(editor->state().band.visible);
    EXPECT_EQ(sel(), Pair(5, 6));
    EXPECT_TRUE(editor->state().lit.test(68));
    EXPECT_TRUE(editor->state().lit.test(69));

    editor->picMouseDown(ax, ay); // line 4 alone: an empty selection in effect
    editor->picMouseUp();
    EXPECT_EQ(sel(), Pair(5, 4));
    key(Key::Del);
    EXPECT_EQ(last(), 7);
}

TEST_F(MouseText, TextToolBuildsOneLineFromItsBox) {
    load({"L-Title", "13  8"});
    EXPECT_TRUE(editor->state().textFrame.visible);
    EXPECT_EQ(editor->state().textFrame.text, "Title");
    EXPECT_EQ(editor->state().textFrame.option, 0);
    EXPECT_EQ(caption(), "(Title     )");
    key(K('E'));
    EXPECT_EQ(editor->state().focus, Focus::TextBox);

    editor->textToolApply("Dastgah\r\nShur", 1);
    EXPECT_EQ(trimmed(4), "L^Dastgah  Shur");
    EXPECT_EQ(current(), 5);
    EXPECT_FALSE(editor->state().textFrame.visible);

    key(Key::Left);
    editor->textToolApply("", 5);
    EXPECT_EQ(line(4), core::Scratch("L>"));
    key(Key::Left);
    editor->textToolApply(std::string(40, 'w'), -1); // no option: a spacer with words
    EXPECT_EQ(line(4), "L " + std::string(30, 'w'));
}

TEST_F(MouseText, CommandToolFillsItsListAndAsksForAFont) {
    load({"LCtfs=2", "13  8"});
    EXPECT_TRUE(editor->state().commandFrame.visible);
    EXPECT_EQ(editor->state().commandFrame.text, "tfs=2");
    EXPECT_EQ(editor->state().commandFrame.listIndex, 0);
    editor->commandListClick(4);
    EXPECT_EQ(editor->state().commandFrame.text, "TRP=");

    host.font = "Nazli";
    editor->commandToolApply("fon=whatever");
    EXPECT_EQ(trimmed(4), "LCFon=Nazli");
    EXPECT_EQ(editor->state().TextFontName, "Nazli");
    key(Key::Left);
    editor->commandToolApply("TOP=40\n");
    EXPECT_EQ(trimmed(4), "LCTOP=40");
}

} // namespace tahrir::edit::test
