#include <gtest/gtest.h>
#include <sys/stat.h>

#include "core/page_store.h"
#include "core/score_reader.h"
#include "core/session.h"
#include "score_files.h"
#include "temp_folder.h"

using namespace tahrir::core;
using namespace tahrir::test;

namespace {

struct Loaded {
    Document doc;
    LoadResult result;
};

class Reader : public ::testing::Test {
protected:
    void SetUp() override { StartSession(session, folder.path()); }

    Loaded load(const std::string& bytes, const std::string& name = "score.srv",
                PageStore* store = nullptr) {
        WriteBytes(folder / name, bytes);
        Loaded out;
        out.doc.CurrentFileName = (folder / name).string();
        out.result = Openp(out.doc, session, store);
        return out;
    }

    TempFolder folder;
    Session session;
};

std::string Pad22(const std::string& text) {
    return text + std::string(22 - text.size(), ' ');
}

const std::initializer_list<std::string> kHead = {"       G", "TEMPO 60", "RHYTM3/4", "13  8"};

} // namespace

TEST_F(Reader, CurrentGenerationLoadsEveryLineAndFillsThePageStore) {
    PageStore store(PageStore::PathIn(folder.path()));
    const auto [doc, result] = load(Sv5File("My piece", {"       G  ", "TEMPO 90", "RHYTM4/4",
                                                         "03 -1", "L^Ms=1", "13  4", "13  4"}),
                                    "score.srv", &store);
    EXPECT_EQ(result.status, LoadStatus::Complete);
    EXPECT_TRUE(result.storeError.empty()) << result.storeError;
    EXPECT_EQ(doc.FileGeneration, Generation::Sv5);
    EXPECT_EQ(doc.Description, "My piece");
    EXPECT_FALSE(doc.LineScrambled);
    EXPECT_EQ(doc.Sheet.LastLine, 7);
    EXPECT_EQ(doc.Sheet.CurrentLine, 4);
    EXPECT_FALSE(doc.DirtyFlag);
    EXPECT_EQ(doc.UndoTop, 1);
    EXPECT_EQ(doc.Sheet[1].text(), Scratch("       G  ")) << "line 1 is kept through Scratch";
    EXPECT_EQ(doc.Sheet[2].text(), Pad22("TEMPO 90"));
    EXPECT_EQ(doc.Sheet[6].text(), Pad22("13  4 C")) << "beamed by the rhythm pass";
    EXPECT_EQ(doc.Sheet[0].text(), "7") << "element 0 holds the line count";
    EXPECT_EQ(doc.CurrentTempo, 90);
    EXPECT_EQ(doc.PlayTempo, 90);
    EXPECT_EQ(doc.TempoSlider, 90);
    // The store is filled before the rhythm pass writes its beam codes.
    ScoreSheet page;
    ASSERT_TRUE(store.readPage(100, page));
    EXPECT_EQ(page.LastLine, 7);
    EXPECT_EQ(page[6].text(), Scratch("13  4"));
}

TEST_F(Reader, BuiltInFilesAreAlreadyInTheCodePage) {
    // A built-in file is already in code page 1256 and needs no conversion.
    const std::string header = "\xE1\xC7<x";
    EXPECT_EQ(load(OldestFile(header, kHead), "DO1DO6").doc.Description, header);
    EXPECT_NE(load(OldestFile(header, kHead), "DO1DO7").doc.Description, header);
}

TEST_F(Reader, TempoLinesAndLaterLinesStoredBeforeTheyAreClassified) {
    // Once line 2 is a tempo line, each line is stored at once; a dropped last line
    // stays in the element past LastLine.
    const auto [doc, result] =
        load(Sv5File("d", {"       G", "tempo 70", "RHYTM4/4", "13  8", "bad"}));
    // Kept although unknown; being no exact "TEMPO" line, the tidy pass blanks column 7.
    EXPECT_EQ(doc.Sheet[2].text(), Pad22("tempo  0"));
    EXPECT_EQ(doc.Sheet.LastLine, 4);
    EXPECT_EQ(doc.Sheet[5].text(), "bad");
    EXPECT_EQ(doc.CurrentTempo, 72) << "lower-case tempo is not taken as the tempo";
    const auto hidden = load(Sv5File("d", {"       G", "TEMPO-90", "RHYTM4/4"}));
    EXPECT_EQ(hidden.doc.CurrentTempo, -90) << "a signed tempo other than -2 stays signed";
    EXPECT_EQ(hidden.doc.TempoSlider, 0) << "the slider is set only above 20";
    const auto minusTwo = load(Sv5File("d", {"       G", "TEMPO-2", "RHYTM4/4"}));
    EXPECT_EQ(minusTwo.doc.CurrentTempo, 2);
    EXPECT_EQ(minusTwo.doc.InitialTempo, 2);
}

TEST_F(Reader, MoreThan2048LinesLeavesTheOpenScoreUntouched) {
    std::string bytes = Sv5File("d", {"       G", "TEMPO 60", "RHYTM4/4"});
    for (int i = 4; i <= MaxLines; ++i)
        bytes += "13  8\r\n";
    const auto full = load(bytes);
    EXPECT_EQ(full.result.status, LoadStatus::Complete);
    EXPECT_EQ(full.doc.Sheet.LastLine, MaxLines);
    // The limit counts accepted lines: a clef change or a stray line after a full sheet
    // is dropped like any other, not taken for line 2049.
    for (const char* tail : {"GSIGN\r\n", "junk\r\n"}) {
        const auto dropped = load(bytes + tail);
        EXPECT_EQ(dropped.result.status, LoadStatus::Partial) << tail;
        EXPECT_EQ(dropped.doc.Sheet.LastLine, MaxLines) << tail;
    }
    Document open = load(Sv5File("open", kHead)).doc;
    open.DirtyFlag = true;
    WriteBytes(folder / "big.srv", bytes + "23  8\r\n");
    open.CurrentFileName = (folder / "big.srv").string();
    const LoadResult result = Openp(open, session, nullptr);
    EXPECT_EQ(result.status, LoadStatus::Failed);
    EXPECT_NE(result.message.find("big.srv"), std::string::npos) << result.message;
    EXPECT_NE(result.message.find("2048"), std::string::npos) << result.message;
    EXPECT_EQ(open.Description, "open");
    EXPECT_EQ(open.Sheet.LastLine, 4);
    EXPECT_TRUE(open.DirtyFlag);
}

TEST_F(Reader, MissingFileAndNoFile) {
    Document doc;
    doc.CurrentFileName = (folder / "absent.srv").string();
    const LoadResult missing = Openp(doc, session, nullptr);
    EXPECT_EQ(missing.status, LoadStatus::Failed);
    EXPECT_NE(missing.message.find("absent.srv"), std::string::npos);
    doc.CurrentFileName = folder.path().string();
    EXPECT_EQ(Openp(doc, session, nullptr).status, LoadStatus::Failed) << "a folder";
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    doc.CurrentFileName = (folder / "pipe").string();
    EXPECT_EQ(Openp(doc, session, nullptr).status, LoadStatus::Failed) << "a pipe, no waiting";
    doc.CurrentFileName = "   ";
    EXPECT_EQ(Openp(doc, session, nullptr).status, LoadStatus::NoFile);
}
