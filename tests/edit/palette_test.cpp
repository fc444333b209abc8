// Palette hints and the idle picture of the insert entry.

#include "core/cp1256.h"
#include "edit/palette.h"

#include "editor_fixture.h"
#include "editor_probe.h"

namespace tahrir::edit::test {

using Palette = EditorTest;

TEST_F(Palette, HintsAndTheIdleInsertEntry) {
    load({"13  8    "});
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
