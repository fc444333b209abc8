// Palette entries, marks, the interval and finger cycles, directive lines and help.

#include "core/cp1256.h"
#include "edit/palette.h"

#include "editor_fixture.h"
#include "editor_probe.h"

namespace tahrir::edit::test {

class Palette : public EditorTest {
protected:
    // Ctrl and a key, then columns 8..9 of line 4.
    std::string marked(int code) {
        key(code, kCtrl);
        return line(4).substr(7, 2);
    }
};

TEST_F(Palette, MarkIsLitOnlyOnceCommitted) {
    load({"13  8    ", "23  8    "});
    EXPECT_EQ(typed(Key::F(12), kCtrl), "13  8  AC");
    EXPECT_FALSE(editor->state().lit.test(41));
    EXPECT_EQ(typed(Key::F(12), kCtrl), "13  8  AC"); // still not lit: writes "AC" again
    keys({Key::Enter, Key::Left});
    EXPECT_TRUE(editor->state().lit.test(41));
    EXPECT_EQ(typed(Key::F(12), kCtrl), "13  8");

    key(Key::F(3), kCtrl);
    key(Key::Right);
    EXPECT_EQ(typed(Key::Left), "13  8  AC"); // a mark is lost when the cursor moves
    key(K('V'));
    EXPECT_EQ(typed(Key::F(3), kCtrl), "13  8  8U"); // one mark a note: the second replaces
}

TEST_F(Palette, IntervalMarksCycleThroughTwentyCodes) {
    load({"13  8    ", "23  8    "});
    std::string seen;
    for (int press = 0; press < 21; ++press) {
        seen += marked(Key::F(1));
        EXPECT_EQ(current(), 4); // committed in place
    }
    // The twenty-first press leaves the family.
    EXPECT_EQ(seen, "1M2M3M4M5M6M7M8M9MAMBMCMDMEMFMGMHMIMJMKM  ");
    EXPECT_EQ(marked(Key::F(7)), "1T");
    EXPECT_EQ(marked(Key::F(1)), "1M"); // the "M" entry is not lit on a "T" line: starts again
}

TEST_F(Palette, FingerMarksCycle) {
    load({"13  8    ", "23  8    "});
    for (const char* word : {"2 ", "2Z", "2B", "  ", "2 "})
        EXPECT_EQ(marked(Key::Digit(2)), word);
    EXPECT_EQ(marked(Key::Digit(3)), "3 "); // another finger is not lit: written plain
    repeat(2, Key::Digit(5), kCtrl);        // no cycle for 5, and not committed
    EXPECT_EQ(penTrimmed(), "13  8  5");
}

TEST_F(Palette, DirectiveEntriesInsertOrRemoveTheirLine) {
    load({"13  8    "});
    editor->paletteClick(27, 0); // F10
    EXPECT_EQ(trimmed(4), "ALL8U");
    EXPECT_EQ(current(), 5);
    key(Key::Left);
    EXPECT_TRUE(editor->state().lit.test(27));
    editor->paletteClick(27, 0); // lit: the line goes
    EXPECT_EQ(trimmed(4), "13  8");
    EXPECT_EQ(last(), 4);

    keys({Key::F(6), Key::Left});
    EXPECT_TRUE(editor->state().lit.test(18));
    key(Key::F(6)); // the spacer always inserts
    EXPECT_EQ(trimmed(4, 5), (Lines{"L", "L"}));
    EXPECT_EQ(last(), 6);
}

TEST_F(Palette, ClicksPassTheirShiftStateWhereTheTableSays) {
    load({"33  8    ", "43  8    "});
    editor->paletteClick(12, kCtrl); // Ctrl+click on sharp writes the key signature
    EXPECT_EQ(keySignature(), "  D    G");
    editor->paletteClick(14, kShift); // Shift+click inserts the "ALL" line
    EXPECT_EQ(trimmed(4), "ALL3S");
    key(Key::Right);
    editor->paletteClick(61, kShift); // other entries pass their fixed state
    EXPECT_EQ(penTrimmed(), "13  8");
    editor->paletteClick(9, kCtrl);
    EXPECT_EQ(penTrimmed(), "13 16");
}

TEST_F(Palette, HelpVoiceAndLineCommandEntries) {
    load({"13  8    "});
    key(K('H'));
    EXPECT_TRUE(editor->state().HelpMode);
    editor->paletteClick(60, 0); // lit: turns help off as H does
    EXPECT_FALSE(editor->state().HelpMode);
    editor->paletteClick(59, 0);
    EXPECT_TRUE(editor->state().SyllableVoiceOn);
    editor->paletteClick(58, 0);
    EXPECT_FALSE(editor->state().SyllableVoiceOn);

    key(K('H'));
    editor->paletteClick(Entry::Paste, 0); // the idle picture shows its own hint
    EXPECT_EQ(editor->state().HintShown, PaletteEntryAt(Entry::Paste).idleHint);
    editor->paletteClick(41, 0);
    EXPECT_EQ(editor->state().HintShown, PaletteEntryAt(41).hint);
    for (int i = 0; i < PaletteEntries; ++i) { // each hint survives the score's code page
        const std::string_view hint = PaletteHint(i, false);
        EXPECT_EQ(core::Cp1256ToUtf8(core::Utf8ToCp1256(hint)), hint) << i;
    }

    EditorProbe::state(*editor).lit.reset(Entry::Insert); // the idle picture inserts the pen
    key(Key::Digit(4));
    editor->paletteClick(59, 0);
    EXPECT_EQ(trimmed(4), "43  8  AC");
    EXPECT_EQ(last(), 5);
}

} // namespace tahrir::edit::test
