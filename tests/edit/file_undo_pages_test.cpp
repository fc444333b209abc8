// The undo pages in the store file, past the pages a load fills.

#include "edit/file_undo_pages.h"

#include <fstream>

#include "editor_fixture.h"

namespace tahrir::edit::test {

TEST(FileUndoPages, PagesLandAtTheirRecordsAndHolesReadBlank) {
    const ::tahrir::test::TempFolder folder;
    const auto file = folder / "tmp.ctz";
    const std::string blank(32, ' ');
    {
        FileUndoPages pages(file);
        pages.writePage(1, {"3", "       G", "TEMPO60", "RHYTM4/4"});
        pages.writePage(150, {"4", "x"});
        EXPECT_EQ(pages.error(), "");
        EXPECT_EQ(pages.readRecord(1, 2), core::Scratch("TEMPO60"));
        EXPECT_EQ(pages.readRecord(150, 1), core::Scratch("x"));
        EXPECT_EQ(pages.readRecord(150, 2), blank); // sparse after a short page
        EXPECT_EQ(pages.readRecord(400, 0), blank); // beyond the end
        EXPECT_EQ(pages.readRecord(1, core::SheetSize), blank);
    }
    // Record 2049 x 150 + 1 + 1 of 32 bytes, counted from 1.
    std::ifstream in(file, std::ios::binary);
    in.seekg(static_cast<std::streamoff>((2049 * 150 + 1) * 32));
    std::string record(32, '?');
    in.read(record.data(), 32);
    EXPECT_EQ(record, core::Scratch("x"));
}

} // namespace tahrir::edit::test
