// Palette entries, marks, the interval and finger cycles, directive lines and help.

#include "edit/palette.h"

#include "editor_fixture.h"

namespace tahrir::edit::test {

using Palette = EditorTest;

TEST_F(Palette, MarkIsLitOnlyOnceCommitted) {
    load({"13  8    ", "23  8    "});
    key(Key::F(12), kCtrl);
    EXPECT_EQ(penTrimmed(), "13  8  AC");
    EXPECT_FALSE(editor->lit.test(41));
    key(Key::F(12), kCtrl); // still not lit: writes "AC" again
    EXPECT_EQ(penTrimmed(), "13  8  AC");
    key(Key::Enter);
    key(Key::Left);
    EXPECT_TRUE(editor->lit.test(41));
    key(Key::F(12), kCtrl);
    EXPECT_EQ(penTrimmed(), "13  8");

    key(Key::F(3), kCtrl); // a mark is lost when the cursor moves
    key(Key::Right);
    key(Key::Left);
    EXPECT_EQ(penTrimmed(), "13  8  AC");
    key(K('V'));
    key(Key::F(3), kCtrl); // one mark a note: the second replaces the first
    EXPECT_EQ(penTrimmed(), "13  8  8U");
}

TEST_F(Palette, IntervalMarksCycleThroughTwentyCodes) {
    load({"13  8    ", "23  8    "});
    std::vector<std::string> seen;
    for (int press = 0; press < 21; ++press) {
        key(Key::F(1), kCtrl);
        seen.push_back(line(4).substr(7, 2));
        EXPECT_EQ(current(), 4); // committed in place
    }
    EXPECT_EQ(seen.front(), "1M");
    EXPECT_EQ(seen[8], "9M");
    EXPECT_EQ(seen[9], "AM");
    EXPECT_EQ(seen[19], "KM");
    EXPECT_EQ(seen[20], "  "); // the twenty-first press leaves the family
    key(Key::F(7), kCtrl);
    EXPECT_EQ(line(4).substr(7, 2), "1T");
    key(Key::F(1), kCtrl); // the "M" entry is not lit on a "T" line: starts again
    EXPECT_EQ(line(4).substr(7, 2), "1M");
}

TEST_F(Palette, FingerMarksCycle) {
    load({"13  8    ", "23  8    "});
    const char* expected[] = {"2 ", "2Z", "2B", "  ", "2 "};
    for (const char* word : expected) {
        key(Key::Digit(2), kCtrl);
        EXPECT_EQ(line(4).substr(7, 2), word);
    }
    key(Key::Digit(3), kCtrl); // another finger is not lit: written plain
    EXPECT_EQ(line(4).substr(7, 2), "3 ");
    key(Key::Digit(5), kCtrl); // no cycle for 5, and not committed
    key(Key::Digit(5), kCtrl);
    EXPECT_EQ(penTrimmed(), "13  8  5");
}

TEST_F(Palette, DirectiveEntriesInsertOrRemoveTheirLine) {
    load({"13  8    "});
    editor->paletteClick(27, 0); // F10
    EXPECT_EQ(trimmed(4), "ALL8U");
    EXPECT_EQ(current(), 5);
    key(Key::Left);
    EXPECT_TRUE(editor->lit.test(27));
    editor->paletteClick(27, 0); // lit: the line goes
    EXPECT_EQ(trimmed(4), "13  8");
    EXPECT_EQ(last(), 4);

    key(Key::F(6));
    key(Key::Left);
    EXPECT_TRUE(editor->lit.test(18));
    key(Key::F(6)); // the spacer always inserts
    EXPECT_EQ(trimmed(4), "L");
    EXPECT_EQ(trimmed(5), "L");
    EXPECT_EQ(last(), 6);
}

TEST_F(Palette, ClicksPassTheirShiftStateWhereTheTableSays) {
    load({"33  8    ", "43  8    "});
    editor->paletteClick(12, kCtrl); // Ctrl+click on sharp writes the key signature
    EXPECT_EQ(line(1).substr(0, 8), "  D    G");
    editor->paletteClick(14, kShift); // Shift+click inserts the "ALL" line
    EXPECT_EQ(trimmed(4), "ALL3S");
    key(Key::Right);
    editor->paletteClick(61, kShift); // other entries pass their fixed state
    EXPECT_EQ(penTrimmed(), "13  8");
    editor->paletteClick(9, kCtrl);
    EXPECT_EQ(penTrimmed(), "13 16");
}

TEST_F(Palette, HeadLinesIgnorePaletteKeys) {
    load({"13  8    "});
    key(Key::Home);
    editor->paletteClick(19, 0);
    EXPECT_EQ(last(), 4);
    EXPECT_EQ(trimmed(2), "TEMPO60");
}

TEST_F(Palette, HelpVoiceAndLineCommandEntries) {
    load({"13  8    "});
    key(K('H'));
    EXPECT_TRUE(editor->HelpMode);
    editor->paletteClick(60, 0); // lit: turns help off as H does
    EXPECT_FALSE(editor->HelpMode);
    editor->paletteClick(59, 0);
    EXPECT_TRUE(editor->SyllableVoiceOn);
    editor->paletteClick(58, 0);
    EXPECT_FALSE(editor->SyllableVoiceOn);

    key(K('H'));
    editor->paletteClick(70, 0); // idle picture: hint 80
    EXPECT_EQ(editor->HintShown, 80);
    editor->paletteClick(41, 0);
    EXPECT_EQ(editor->HintShown, 41);
    EXPECT_EQ(PaletteHintIndex(58, false), 68);
    EXPECT_EQ(PaletteHintIndex(58, true), 58);

    editor->lit.reset(59); // the idle picture of 59 inserts the pen
    key(Key::Digit(4));
    editor->paletteClick(59, 0);
    EXPECT_EQ(trimmed(4), "43  8  AC");
    EXPECT_EQ(last(), 5);
}

} // namespace tahrir::edit::test
