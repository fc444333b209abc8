// The undo pages in the store file, past the pages a load fills.

#include "edit/file_undo_pages.h"

#include <fstream>

#include "editor_fixture.h"

namespace tahrir::edit::test {

TEST(FileUndoPages, PagesLandAtTheirRecordsAndHolesReadBlank) {
    const ::tahrir::test::TempFolder folder;
    const auto file = folder / "tmp.ctz";
    {
        FileUndoPages pages(file);
        pages.writePage(1, {"3", "       G", "TEMPO60", "RHYTM4/4"});
        pages.writePage(150, {"4", "x"});
        EXPECT_EQ(pages.error(), "");
        EXPECT_EQ(pages.readRecord(1, 2), core::Scratch("TEMPO60"));
        EXPECT_EQ(pages.readRecord(150, 1), core::Scratch("x"));
        EXPECT_EQ(pages.readRecord(150, 2), std::string(32, ' ')); // sparse after a short page
        EXPECT_EQ(pages.readRecord(400, 0), std::string(32, ' ')); // beyond the end
        EXPECT_EQ(pages.readRecord(1, core::SheetSize), std::string(32, ' '));
    }
    // Record 2049 x 150 + 1 + 1 of 32 bytes, counted from 1.
    std::ifstream in(file, std::ios::binary);
    in.seekg(static_cast<std::streamoff>((2049 * 150 + 1) * 32));
    std::string record(32, '?');
    in.read(record.data(), 32);
    EXPECT_EQ(record, core::Scratch("x"));
}

class FileUndo : public EditorTest {};

TEST_F(FileUndo, UndoThroughTheStoreFileGoesBeyondAHundredPages) {
    FileUndoPages pages(folder / "tmp.ctz");
    core::ScoreSheet& s = doc.Sheet;
    s.fill("        ");
    s.setLine(1, "       G  ");
    s.setLine(2, "TEMPO60");
    s.setLine(3, "RHYTM4/4");
    s.setLine(4, "13  8    ");
    s.LastLine = 4;
    editor = std::make_unique<Editor>(
        doc, EditorServices{&layout, &audio, &clipboard, &host, &pages}, folder);
    editor->documentReplaced();
    editor->editorClick();
    for (int i = 0; i < 110; ++i) {
        key(Key::Digit(1 + i % 7));
        key(Key::Enter);
    }
    const std::string line60 = line(60);
    for (int i = 0; i < 110; ++i)
        key(K('Z'), kCtrl);
    EXPECT_EQ(last(), 4);
    EXPECT_EQ(trimmed(4), "13  8");
    for (int i = 0; i < 110; ++i)
        key(K('Y'), kCtrl);
    EXPECT_EQ(last(), 113);
    EXPECT_EQ(line(60), line60);
}

} // namespace tahrir::edit::test
