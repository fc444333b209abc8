#include <gtest/gtest.h>

#include <sys/stat.h>

#include "core/score_reader.h"
#include "core/score_writer.h"
#include "core/session.h"
#include "score_files.h"
#include "temp_folder.h"

using namespace tahrir::core;
using namespace tahrir::test;

namespace {
Document SmallScore() {
    Document doc;
    doc.Description = "\xDA\xE4\xE6\xC7\xE4\r\nTitle";
    doc.Sheet.LastLine = 4;
    doc.Sheet.setLine(1, "       G  ");
    doc.Sheet.setLine(2, "TEMPO 60");
    doc.Sheet.setLine(3, "RHYTM4/4");
    doc.Sheet.setLine(4, "13  8  " + std::string(40, 'x'));
    doc.Sheet.setLine(5, "beyond the last line");
    doc.DirtyFlag = true;
    return doc;
}
} // namespace

TEST(ScoreWriter, ExactBytes) {
    EXPECT_EQ(ScoreFileImage(SmallScore()),
              "\"Sv5 Tahrir score\"\r\n\"\xDA\xE4\xE6\xC7\xE4\r\nTitle\"\r\n" +
                  Scratch("       G") + "\r\n" + Scratch("TEMPO 60") + "\r\n" +
                  Scratch("RHYTM4/4") + "\r\n" + "13  8  " + std::string(25, 'x') + "\r\n");
    EXPECT_EQ(std::string(SavedMagicField).find('"'), std::string::npos);
    Document quoted = SmallScore();
    quoted.Description = "say \"hi\"";
    EXPECT_NE(ScoreFileImage(quoted).find("\"say \"hi\"\"\r\n"), std::string::npos)
        << "a quote in the description is written as it is";
}

TEST(ScoreWriter, SaveClearsDirtyAndRoundTrips) {
    TempFolder folder;
    Session session;
    StartSession(session, folder.path());
    Document doc = SmallScore();
    const auto path = folder / "out.srv";
    const SaveResult saved = SaveImage(doc, path);
    ASSERT_TRUE(saved.ok) << saved.message;
    EXPECT_FALSE(doc.DirtyFlag);
    EXPECT_EQ(doc.CurrentFileName, path.string());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1)
        << "no temporary file is left behind";
    Document back;
    back.CurrentFileName = path.string();
    ASSERT_TRUE(Openp(back, session, nullptr).loaded());
    EXPECT_EQ(back.Description, doc.Description);
    EXPECT_EQ(back.FileGeneration, Generation::Sv5);
    EXPECT_EQ(back.Sheet.LastLine, 4);
    EXPECT_EQ(back.Sheet[4].size(), 32u) << "a loaded line keeps the length it has in the file";
    EXPECT_EQ(ScoreFileImage(back), ReadBytes(path)) << "a second save changes nothing";
}

TEST(ScoreWriter, FailedWriteKeepsTheOldFile) {
    TempFolder folder;
    Document doc = SmallScore();
    const auto path = folder / "keep.srv";
    WriteBytes(path, "old contents");
    // A read-only folder: the temporary file cannot be made, the old file stays.
    ::chmod(folder.path().c_str(), 0555);
    const SaveResult saved = SaveImage(doc, path);
    ::chmod(folder.path().c_str(), 0755);
    if (::geteuid() != 0) {
        EXPECT_FALSE(saved.ok);
        EXPECT_NE(saved.message.find("keep.srv"), std::string::npos) << saved.message;
        EXPECT_TRUE(doc.DirtyFlag) << "a failed save leaves the score unsaved";
        EXPECT_EQ(ReadBytes(path), "old contents");
    }
    // A folder in the way of the target: the rename fails and nothing is lost.
    std::filesystem::create_directory(folder / "dir.srv");
    EXPECT_FALSE(SaveImage(doc, folder / "dir.srv").ok);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "dir.srv"));
    EXPECT_FALSE(SaveImage(doc, folder / "no" / "such" / "x.srv").ok);
    EXPECT_FALSE(SaveImage(doc, "").ok);
}
