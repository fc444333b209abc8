// Selection, copy, cut, paste (internal and through the paste file), undo and redo.

#include <fstream>
#include <sstream>

#include "editor_fixture.h"

namespace tahrir::edit::test {

namespace {
const std::vector<std::string> kSix = {"13  8", "23  8", "33  8", "43  8", "53  8", "63  8"};
}

class Clipboard : public EditorTest {
protected:
    void bandSelect(int a, int b) {
        const LineLabel& from = editor->labels[static_cast<std::size_t>(a)];
        const LineLabel& to = editor->labels[static_cast<std::size_t>(b)];
        editor->picMouseDown(from.left, from.top);
        editor->picMouseMove(to.left, to.top, true);
        editor->picMouseUp();
    }
    void moveTo(int line) { editor->labelMouseDown(line, 1, 0); }
    std::string body() const {
        std::string out;
        for (int i = 4; i <= last(); ++i)
            out += trimmed(i).substr(0, 1);
        return out;
    }
};

TEST_F(Clipboard, UndoAndRedoHaveNoDepthLimitAndANewEditDropsRedo) {
    load({"13  8    "});
    const std::string opened = line(4);
    for (int i = 0; i < 120; ++i) {
        key(Key::Digit(1 + i % 7));
        key(Key::Enter);
    }
    ASSERT_EQ(doc.UndoIndex, 121);
    ASSERT_EQ(last(), 124);
    const std::string finalLine = line(100);
    for (int i = 0; i < 120; ++i)
        key(K('Z'), kCtrl);
    EXPECT_EQ(doc.UndoIndex, 1);
    EXPECT_EQ(last(), 4);
    EXPECT_EQ(trimmed(4), "13  8");
    EXPECT_EQ(current(), 4); // clamped to the restored LastLine
    key(K('Z'), kCtrl);      // page 1 is the score as opened
    EXPECT_EQ(doc.UndoIndex, 1);

    for (int i = 0; i < 120; ++i)
        key(K('Y'), kCtrl);
    EXPECT_EQ(doc.UndoIndex, 121);
    EXPECT_EQ(line(100), finalLine);
    key(K('Y'), kCtrl);
    EXPECT_EQ(doc.UndoIndex, 121);

    key(K('Z'), kCtrl);
    key(K('Z'), kCtrl);
    key(Key::Digit(7));
    key(Key::Enter); // a new page: redo is gone
    EXPECT_EQ(doc.UndoTop, doc.UndoIndex);
    const int page = doc.UndoIndex;
    key(K('Y'), kCtrl);
    EXPECT_EQ(doc.UndoIndex, page);
}

TEST_F(Clipboard, CutWithTheCursorInsideTheSelectionLeavesTheLinesAsTheyWere) {
    load(kSix);
    bandSelect(5, 7);
    ASSERT_EQ(editor->SelStart, 5);
    ASSERT_EQ(editor->SelEnd, 7);
    EXPECT_TRUE(editor->lit.test(68));
    key(K('X'), kCtrl);
    EXPECT_EQ(body(), "123456"); // nothing moves before the paste
    key(Key::Right);             // keys keep the selection; the cursor goes to line 6
    key(Key::Right);
    ASSERT_EQ(current(), 6);
    key(K('V'), kCtrl);
    // Gap of 3 at line 6: 1 2 3 4 5 3 4 5 6; the copies then read lines the gap already
    // overwrote (6 <- 5 = "2", 7 <- 6 = "2", 8 <- 7 = "2"), and the cut closes 5..7 again.
    EXPECT_EQ(body(), "123456");
    EXPECT_EQ(last(), 9);
    EXPECT_EQ(editor->SelStart, 0);
    EXPECT_FALSE(editor->lit.test(70));
}

TEST_F(Clipboard, CutAboveTheCursorMovesTheLines) {
    load(kSix);
    bandSelect(5, 6);
    key(K('X'), kCtrl);
    for (int i = 0; i < 4; ++i)
        key(Key::Right);
    ASSERT_EQ(current(), 8);
    key(K('V'), kCtrl);
    EXPECT_EQ(body(), "142356");
    EXPECT_EQ(last(), 9);
}

TEST_F(Clipboard, PasteAboveASelectionShiftsItFirst) {
    load(kSix);
    bandSelect(7, 8);
    key(K('C'), kCtrl);
    EXPECT_TRUE(editor->lit.test(70));
    key(Key::Right);
    ASSERT_EQ(current(), 5);
    key(K('V'), kCtrl);
    EXPECT_EQ(body(), "14523456");
    EXPECT_EQ(last(), 11);
    EXPECT_EQ(current(), 5);
}

TEST_F(Clipboard, CopyWritesThePasteFileThatAnotherRunCanPaste) {
    load(kSix);
    key(K('C'), kCtrl); // no selection: nothing at all
    EXPECT_FALSE(std::filesystem::exists(editor->pasteFile()));
    bandSelect(4, 5);
    EXPECT_EQ(editor->SelStart, 5); // line 4 is never part of a band
    bandSelect(5, 6);
    key(K('C'), kCtrl);
    EXPECT_EQ(clipboard.text(), "Srv5 Paste Data");
    std::ifstream in(editor->pasteFile(), std::ios::binary);
    std::stringstream file;
    file << in.rdbuf();
    EXPECT_EQ(file.str(), "2\r\n\"" + line(5) + "\"\r\n\"" + line(6) + "\"\r\n");

    key(Key::Esc);
    EXPECT_EQ(clipboard.text(), "");
    key(K('V'), kCtrl); // neither marker nor selection
    EXPECT_EQ(last(), 9);

    clipboard.setText("Srv5 Paste Data"); // as another copy of the program leaves it
    key(Key::End);
    const int page = doc.UndoIndex;
    key(K('V'), kCtrl);
    EXPECT_EQ(body(), "12345236");
    EXPECT_EQ(doc.UndoIndex, page + 1);
    EXPECT_EQ(clipboard.text(), "");
}

TEST_F(Clipboard, ABrokenPasteFileIsReportedAndChangesNothing) {
    load(kSix);
    const char* files[] = {"", "3\r\n\"13  8\"\r\n", "x\r\n", "5000\r\n"};
    for (const char* content : files) {
        std::ofstream(editor->pasteFile(), std::ios::binary) << content;
        clipboard.setText("Srv5 Paste Data");
        host.messages.clear();
        key(K('V'), kCtrl);
        EXPECT_EQ(host.messages.size(), 1u) << content;
        EXPECT_EQ(body(), "123456");
    }
    std::filesystem::remove(editor->pasteFile());
    clipboard.setText("Srv5 Paste Data");
    key(K('V'), kCtrl);
    EXPECT_EQ(body(), "123456");
}

TEST_F(Clipboard, PasteThatWouldPassTheLastLineSaysMemoryFull) {
    load(std::vector<std::string>(core::MaxLines - 4, "13  8"));
    bandSelect(5, 6);
    key(K('C'), kCtrl);
    key(K('V'), kCtrl);
    EXPECT_EQ(host.messages, std::vector<std::string>{"Memory full!"});
    EXPECT_EQ(last(), core::MaxLines - 1);
}

// Undo keeps the selection, so it may name lines that a later page no longer has. Moving
// such a selection below the gap would copy from beyond line 2048: refused as memory full.
TEST_F(Clipboard, StaleSelectionThatWouldMovePastTheLastIndexSaysMemoryFull) {
    load(std::vector<std::string>(core::MaxLines - 3, "13  8"));
    key(K('A'), kCtrl);
    key(Key::Del);
    ASSERT_EQ(last(), 4);
    key(K('Z'), kCtrl);
    ASSERT_EQ(last(), core::MaxLines);
    bandSelect(1400, 2000); // about 600 lines, lying below the cursor on line 4
    const int selStart = editor->SelStart, selEnd = editor->SelEnd;
    ASSERT_GT(selEnd + (selEnd - selStart + 1), core::MaxLines); // moved, it passes 2048
    key(K('C'), kCtrl);
    key(K('Y'), kCtrl);
    ASSERT_EQ(last(), 4);
    const int page = doc.UndoIndex;
    key(K('V'), kCtrl);
    EXPECT_EQ(host.messages, std::vector<std::string>{"Memory full!"});
    EXPECT_EQ(last(), 4);
    EXPECT_EQ(doc.UndoIndex, page);
    EXPECT_EQ(editor->SelEnd, selEnd); // nothing has changed
}

} // namespace tahrir::edit::test
