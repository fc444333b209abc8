// Selection, copy, cut, paste (internal and through the paste file), undo and redo.

#include <fstream>
#include <sstream>

#include "editor_fixture.h"

namespace tahrir::edit::test {

const Lines kSix = {"13  8", "23  8", "33  8", "43  8", "53  8", "63  8"};
const std::string kMarker = "Srv5 Paste Data";

using Clipboard = EditorTest;

TEST_F(Clipboard, CopyWritesThePasteFileThatAnotherRunCanPaste) {
    load(kSix);
    ctrl('C'); // no selection: nothing at all
    EXPECT_FALSE(std::filesystem::exists(editor->pasteFile()));
    bandSelect(4, 5);
    EXPECT_EQ(editor->state().SelStart, 5); // line 4 is never part of a band
    bandSelect(5, 6);
    ctrl('C');
    EXPECT_EQ(clipboard.text(), kMarker);
    std::ifstream in(editor->pasteFile(), std::ios::binary);
    std::stringstream file;
    file << in.rdbuf();
    EXPECT_EQ(file.str(), "2\r\n\"" + line(5) + "\"\r\n\"" + line(6) + "\"\r\n");

    key(Key::Esc);
    EXPECT_EQ(clipboard.text(), "");
    ctrl('V'); // neither marker nor selection
    EXPECT_EQ(last(), 9);

    clipboard.setText(kMarker); // as another copy of the program leaves it
    key(Key::End);
    const int page = doc.UndoIndex;
    ctrl('V');
    EXPECT_EQ(body(), "12345236");
    EXPECT_EQ(doc.UndoIndex, page + 1);
    EXPECT_EQ(clipboard.text(), "");
}

TEST_F(Clipboard, ABrokenPasteFileIsReportedAndChangesNothing) {
    load(kSix);
    for (const char* content : {"", "3\r\n\"13  8\"\r\n", "x\r\n", "5000\r\n"}) {
        std::ofstream(editor->pasteFile(), std::ios::binary) << content;
        clipboard.setText(kMarker);
        host.messages.clear();
        ctrl('V');
        EXPECT_EQ(host.messages.size(), 1u) << content;
        EXPECT_EQ(body(), "123456");
    }
    std::filesystem::remove(editor->pasteFile());
    clipboard.setText(kMarker);
    ctrl('V');
    EXPECT_EQ(body(), "123456");
}

// Undo keeps the selection, so it may name lines that a later page no longer has. Moving
// such a selection below the gap would copy from beyond line 2048: refused as memory full.
TEST_F(Clipboard, StaleSelectionThatWouldMovePastTheLastIndexSaysMemoryFull) {
    load(Lines(core::MaxLines - 3, "13  8"));
    ctrl('A');
    key(Key::Del);
    ASSERT_EQ(last(), 4);
    ctrl('Z');
    ASSERT_EQ(last(), core::MaxLines);
    bandSelect(1400, 2000); // about 600 lines, lying below the cursor on line 4
    const int selEnd = editor->state().SelEnd;
    ASSERT_GT(selEnd + (selEnd - editor->state().SelStart + 1), core::MaxLines);
    ctrl('C');
    ctrl('Y');
    ASSERT_EQ(last(), 4);
    const int page = doc.UndoIndex;
    ctrl('V');
    EXPECT_EQ(host.messages, Lines{"Memory full!"});
    EXPECT_EQ(last(), 4);
    EXPECT_EQ(doc.UndoIndex, page);
    EXPECT_EQ(editor->state().SelEnd, selEnd); // nothing has changed
}

} // namespace tahrir::edit::test
