#include <gtest/gtest.h>

#include "core/page_store.h"
#include "core/recovery.h"
#include "temp_folder.h"

using namespace tahrir::core;
using namespace tahrir::test;

namespace {
ScoreSheet SmallSheet() {
    ScoreSheet sheet;
    sheet.LastLine = 3;
    sheet.setLine(1, "       G              ");
    sheet.setLine(2, "TEMPO 60              ");
    sheet.setLine(3, "RHYTM4/4" + std::string(40, '*')); // longer than a record
    sheet.setLine(4, "stale line");
    return sheet;
}
} // namespace

TEST(PageStore, FillWritesEveryPageAsFixedRecords) {
    TempFolder folder;
    PageStore store(PageStore::PathIn(folder.path()));
    ASSERT_TRUE(store.fillAll(SmallSheet(), "3"));
    const std::string bytes = ReadBytes(store.file());
    ASSERT_EQ(bytes.size(), PageStore::FileBytes);
    for (int page : {0, 57, 100}) {
        const std::size_t base = std::size_t(page) * PageStore::PageBytes;
        EXPECT_EQ(bytes.substr(base, 32), Scratch("3")) << "record 1: the count, left-aligned";
        EXPECT_EQ(bytes.substr(base + 32 * 3, 32), Scratch("RHYTM4/4" + std::string(40, '*')));
        EXPECT_EQ(bytes.substr(base + 32 * 4, 32), Scratch("stale line")) << "stale lines too";
        EXPECT_EQ(bytes.substr(base + 32 * 2048, 32), std::string(32, ' '));
    }
}

TEST(PageStore, WriteAndReadSinglePages) {
    TempFolder folder;
    PageStore store(PageStore::PathIn(folder.path()));
    ScoreSheet sheet = SmallSheet();
    ASSERT_TRUE(store.fillAll(sheet, "3"));
    sheet.setLine(2, "TEMPO 99");
    sheet.LastLine = 2;
    ASSERT_TRUE(store.writePage(7, sheet));
    EXPECT_EQ(std::filesystem::file_size(store.file()), PageStore::FileBytes);
    ScoreSheet back;
    ASSERT_TRUE(store.readPage(7, back));
    EXPECT_EQ(back.LastLine, 2);
    EXPECT_EQ(back[2].text(), Scratch("TEMPO 99"));
    EXPECT_EQ(back[0].text(), Scratch("2"));
    ASSERT_TRUE(store.readPage(6, back));
    EXPECT_EQ(back.LastLine, 3);
    EXPECT_EQ(back[2].text(), Scratch("TEMPO 60"));
    EXPECT_FALSE(store.writePage(101, sheet));
    EXPECT_FALSE(store.readPage(-1, back));
    EXPECT_NE(store.error().find("tmp.ctz"), std::string::npos);
}

TEST(PageStore, DamagedStoreIsReportedAndCountIsBounded) {
    TempFolder folder;
    PageStore store(PageStore::PathIn(folder.path()));
    ScoreSheet sheet;
    EXPECT_FALSE(store.readPage(0, sheet)) << "no store yet";
    WriteBytes(store.file(), "99999" + std::string(PageStore::PageBytes - 5, ' '));
    ASSERT_TRUE(store.readPage(0, sheet));
    EXPECT_EQ(sheet.LastLine, MaxLines) << "a count from the file is not trusted";
    EXPECT_FALSE(store.readPage(1, sheet)) << "a short file has no page 1";
    ASSERT_TRUE(store.clear());
    EXPECT_EQ(std::filesystem::file_size(store.file()), 0u);
    PageStore nowhere(folder / "missing" / "tmp.ctz");
    EXPECT_FALSE(nowhere.fillAll(sheet, "0"));
    EXPECT_FALSE(nowhere.error().empty());
}

TEST(PageStore, ALeftStoreIsFoundOnlyWithItsNoteAndAPageItHolds) {
    TempFolder folder;
    PageStore store(PageStore::PathIn(folder.path()));
    EXPECT_FALSE(FindLeftSnapshot(store)) << "no store";
    ASSERT_TRUE(store.fillAll(SmallSheet(), "3"));
    EXPECT_FALSE(FindLeftSnapshot(store)) << "a load alone leaves nothing to recover";
    ScoreSheet edited = SmallSheet();
    edited.setLine(2, "TEMPO 99");
    ASSERT_TRUE(store.writePage(5, edited));
    NoteSnapshot(store.file(), 5, "/scores/a.srv");
    const auto left = FindLeftSnapshot(store);
    ASSERT_TRUE(left);
    EXPECT_EQ(left->page, 5);
    EXPECT_EQ(left->fileName, "/scores/a.srv");
    NoteSnapshot(store.file(), 102, "/scores/a.srv");
    EXPECT_FALSE(FindLeftSnapshot(store)) << "a page beyond the store";
    ASSERT_TRUE(store.clear());
    EXPECT_FALSE(std::filesystem::exists(SnapshotNotePath(store.file()))) << "a normal end forgets";
    EXPECT_FALSE(FindLeftSnapshot(store));
}
