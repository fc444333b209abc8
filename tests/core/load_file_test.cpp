#include <gtest/gtest.h>

#include "core/load_file.h"
#include "core/page_store.h"
#include "core/session.h"
#include "score_files.h"
#include "temp_folder.h"

using namespace tahrir::core;
using namespace tahrir::test;

TEST(LoadFile, RecentListRules) {
    TempFolder folder;
    const auto list = folder / "RecentList.TXT";
    ASSERT_TRUE(UpdateRecentList(folder.path(), "/a.srv"));
    EXPECT_EQ(ReadBytes(list), "/a.srv\r\n") << "a new list: the path alone";
    ASSERT_TRUE(UpdateRecentList(folder.path(), "/b.srv"));
    EXPECT_EQ(ReadBytes(list), "/b.srv\r\n/a.srv\r\n--Back--\r\n");
    // The path moves to the top; blanks and the end mark are not carried over.
    WriteBytes(list, "/c.srv\r\n   \r\n/a.srv\r\n--Back--\r\n/b.srv\r\n");
    ASSERT_TRUE(UpdateRecentList(folder.path(), "/a.srv"));
    EXPECT_EQ(ReadBytes(list), "/a.srv\r\n/c.srv\r\n/b.srv\r\n--Back--\r\n");
    // At most 26 entries are read; the file holds the new path, those 26 and the end mark.
    std::string many;
    for (int i = 0; i < 40; ++i) many += "/s" + std::to_string(i) + ".srv\n";
    WriteBytes(list, many);
    const auto entries = ReadRecentList(folder.path());
    ASSERT_EQ(entries.size(), 26u);
    EXPECT_EQ(entries.back(), "/s25.srv");
    ASSERT_TRUE(UpdateRecentList(folder.path(), "/new.srv"));
    const auto after = ReadRecentList(folder.path());
    EXPECT_EQ(after.front(), "/new.srv");
    EXPECT_EQ(after[1], "/s0.srv");
    EXPECT_EQ(after.back(), "/s24.srv");
    EXPECT_NE(ReadBytes(list).find("/s25.srv\r\n--Back--\r\n"), std::string::npos);
}

TEST(LoadFile, OpenRunsTheWholeCommand) {
    TempFolder folder;
    Session session;
    StartSession(session, folder.path());
    PageStore store(PageStore::PathIn(folder.path()));
    const auto score = folder / "Song.srv";
    WriteBytes(score, Sv5File("d", {"       G", "TEMPO 80", "RHYTM4/4", "13  8"}));
    WriteBytes(folder / "Song-T80.Wav", "RIFF");
    Document doc;
    const OpenResult opened = OpenScoreFile(doc, session, &store, score.string());
    EXPECT_TRUE(opened.load.loaded());
    EXPECT_FALSE(opened.message);
    EXPECT_EQ(opened.recording, (folder / "Song-T80.Wav").string());
    EXPECT_EQ(doc.CurrentFileName, score.string());
    EXPECT_EQ(ReadRecentList(folder.path()).front(), score.string());
    EXPECT_EQ(std::filesystem::file_size(store.file()), PageStore::FileBytes);
    const OpenResult refused = OpenScoreFile(doc, session, &store, (folder / "x?.srv").string());
    EXPECT_EQ(refused.message, "Can't read File Name");
    const OpenResult missing = OpenScoreFile(doc, session, &store, (folder / "none.srv").string());
    EXPECT_FALSE(missing.load.loaded());
    EXPECT_FALSE(missing.message) << "a missing file ends the command quietly";
    EXPECT_EQ(doc.CurrentFileName, score.string());
}
