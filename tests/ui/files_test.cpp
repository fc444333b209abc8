// New, open, the recent list, save and leaving, with the questions each one asks.

#include <QListWidget>
#include <QTest>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "core/score_reader.h"
#include "core/score_writer.h"
#include "edit/editor.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

std::string ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

// Makes the open score dirty with one edit through the keyboard.
void Dirty(WindowRig& rig) {
    rig.enterEditor();
    rig.key(Qt::Key_Right);
    rig.key(Qt::Key_Right);
    rig.key(Qt::Key_Right);
    rig.key(Qt::Key_Right);
    rig.key(Qt::Key_Up);
    rig.key(Qt::Key_Return);
    ASSERT_TRUE(rig.window->document().DirtyFlag);
}

TEST(WindowFiles, EditedScoreSavedAndReadBackHoldsTheSameLines) {
    WindowRig rig;
    const std::string file = rig.demoCopy();
    ASSERT_TRUE(rig.window->openPath(file));
    Dirty(rig);
    const std::string out = (rig.folder.path() / "saved.srv").string();
    rig.dialogs.savePaths.push_back(out);
    ASSERT_TRUE(rig.window->SaveImage());
    EXPECT_FALSE(rig.window->document().DirtyFlag);
    EXPECT_TRUE(rig.window->windowTitle().contains("saved.srv"));
    // The file reads back to the sheet the window holds, line by line.
    core::Document back;
    const core::LoadResult r = core::ParseScore(ReadAll(out), false, back);
    ASSERT_TRUE(r.loaded());
    const core::ScoreSheet& sheet = rig.window->document().Sheet;
    ASSERT_EQ(back.Sheet.LastLine, sheet.LastLine);
    for (int i = 4; i <= sheet.LastLine; ++i) {
        // Column 7 (the beam) is rebuilt by the reader; the rest must agree.
        std::string a = back.Sheet[i].text(), b = sheet[i].text();
        a.resize(32, ' ');
        b.resize(32, ' ');
        if (a.size() > 6) a[6] = b[6] = ' ';
        EXPECT_EQ(a, b) << "line " << i;
    }
    // The reopened file shows the edit: line 8 was raised from 2 to 3.
    ASSERT_TRUE(rig.window->openPath(out));
    EXPECT_EQ(rig.window->document().Sheet[8].text().substr(0, 2), "33");
}

TEST(WindowFiles, CancelInTheSaveDialogStillSavesToThePresetName) {
    WindowRig rig;
    const std::string file = rig.demoCopy();
    ASSERT_TRUE(rig.window->openPath(file));
    Dirty(rig);
    const std::string before = ReadAll(file);
    ASSERT_TRUE(rig.window->SaveImage()); // the scripted dialog answers Cancel
    EXPECT_NE(ReadAll(file), before);
    EXPECT_EQ(ReadAll(file), core::ScoreFileImage(rig.window->document()));
    EXPECT_FALSE(rig.window->document().DirtyFlag);
}

TEST(WindowFiles, AFileThatCannotBeReadKeepsTheOpenScore) {
    WindowRig rig;
    ASSERT_TRUE(rig.window->openPath(rig.demoCopy()));
    const int last = rig.window->document().Sheet.LastLine;
    const std::string line8 = rig.window->document().Sheet[8].text();
    // More lines than the sheet holds.
    const std::string big = (rig.folder.path() / "big.srv").string();
    {
        std::ofstream out(big, std::ios::binary);
        out << "\"Sv5\"\r\n\"x\"\r\n   S   G\r\nTEMPO60\r\nRHYTM4/4\r\n";
        for (int i = 0; i < 2100; ++i) out << "13  8\r\n";
    }
    EXPECT_FALSE(rig.window->openPath(big));
    EXPECT_FALSE(rig.window->openPath((rig.folder.path() / "missing.srv").string()));
    EXPECT_FALSE(rig.window->openPath((rig.folder.path() / "what?.srv").string()));
    ASSERT_EQ(rig.dialogs.messages.size(), 3u);
    EXPECT_EQ(rig.dialogs.messages[2], "Can't read File Name");
    EXPECT_EQ(rig.window->document().Sheet.LastLine, last);
    EXPECT_EQ(rig.window->document().Sheet[8].text(), line8);
    EXPECT_TRUE(rig.window->windowTitle().contains("shur-daramad.srv"));
}

TEST(WindowFiles, NewScoreFromTheThreeQuestions) {
    WindowRig rig;
    rig.dialogs.inputs = {std::string("72"), std::string("3/8"), std::string("2")};
    rig.window->NewImage();
    ASSERT_EQ(rig.dialogs.inputsAsked.size(), 3u);
    EXPECT_EQ(rig.dialogs.inputsAsked[0], " Tempo = ");
    const core::Document& doc = rig.window->document();
    EXPECT_EQ(doc.Sheet[2].text().substr(0, 7), "TEMPO72");
    EXPECT_EQ(doc.Sheet[3].text().substr(0, 8), "RHYTM3/8");
    // Two measures of a barline, a measure number and three eighth rests.
    EXPECT_EQ(doc.Sheet.LastLine, 3 + 2 * 5);
    EXPECT_EQ(doc.Sheet[13].text().substr(0, 5), "03  4");
    EXPECT_EQ(doc.CurrentFileName, "Untitled");
    EXPECT_FALSE(doc.DirtyFlag);
    // The editor is on and Home put the cursor on the head.
    EXPECT_EQ(rig.window->editor().EditMode, 1);
    EXPECT_EQ(doc.Sheet.CurrentLine, 2);
}

TEST(WindowFiles, CancelAtTheThirdQuestionLeavesTheBlankSheetUsable) {
    WindowRig rig;
    ASSERT_TRUE(rig.window->openPath(rig.demoCopy()));
    const int last = rig.window->document().Sheet.LastLine;
    rig.dialogs.inputs = {std::string("60"), std::string("4/4"), std::nullopt};
    rig.window->NewImage();
    const core::Document& doc = rig.window->document();
    EXPECT_EQ(doc.Sheet.LastLine, last);
    EXPECT_EQ(doc.Sheet[2].text().substr(0, 7), "TEMPO60");
    EXPECT_EQ(doc.Sheet[3].text().substr(0, 8), "RHYTM4/4");
    EXPECT_EQ(doc.Sheet[10].text().find_first_not_of(' '), std::string::npos);
    // The window goes on taking keys on the blank sheet.
    rig.enterEditor();
    rig.key(Qt::Key_End);
    rig.key(Qt::Key_5);
    rig.key(Qt::Key_Return);
    EXPECT_EQ(rig.window->document().Sheet.LastLine, last);
}

TEST(WindowFiles, AltF4LeavesThroughTheExitQuestion) {
    WindowRig rig;
    ASSERT_TRUE(rig.window->openPath(rig.demoCopy()));
    rig.enterEditor();
    rig.dialogs.answers = {Answer::No};
    rig.key(Qt::Key_F4, Qt::AltModifier);
    QApplication::processEvents();
    EXPECT_TRUE(rig.window->isVisible());
    rig.dialogs.answers = {Answer::Yes};
    rig.key(Qt::Key_F4, Qt::AltModifier);
    QApplication::processEvents();
    EXPECT_FALSE(rig.window->isVisible());
    ASSERT_EQ(rig.dialogs.questionsAsked.size(), 2u);
    EXPECT_EQ(rig.dialogs.questionsAsked[1], "Do you want to Exit ?");
}

TEST(WindowFiles, UnsavedChangesAskBeforeTheyAreLost) {
    WindowRig rig;
    ASSERT_TRUE(rig.window->openPath(rig.demoCopy()));
    Dirty(rig);
    // Cancel: no file dialog, the score stays dirty.
    rig.dialogs.answers = {Answer::Cancel};
    rig.window->LoadFile(0);
    EXPECT_EQ(rig.dialogs.openDialogs, 0);
    EXPECT_TRUE(rig.window->document().DirtyFlag);
    EXPECT_EQ(rig.dialogs.questionsAsked.back(), "Do you want to save ?");
    // No: the change is given up and the dialog opens.
    rig.dialogs.answers = {Answer::No};
    rig.window->LoadFile(0);
    EXPECT_EQ(rig.dialogs.openDialogs, 1);
    EXPECT_FALSE(rig.window->document().DirtyFlag);
}

TEST(WindowFiles, ExitAsksToSaveThenToExit) {
    WindowRig rig;
    ASSERT_TRUE(rig.window->openPath(rig.demoCopy()));
    Dirty(rig);
    rig.dialogs.answers = {Answer::Cancel};
    EXPECT_FALSE(rig.window->ExitImage());
    EXPECT_TRUE(rig.window->document().DirtyFlag);
    rig.dialogs.answers = {Answer::No, Answer::No};
    EXPECT_FALSE(rig.window->ExitImage());
    EXPECT_FALSE(rig.window->document().DirtyFlag);
    rig.dialogs.questionsAsked.clear();
    rig.dialogs.answers = {Answer::Yes};
    EXPECT_TRUE(rig.window->ExitImage());
    ASSERT_EQ(rig.dialogs.questionsAsked.size(), 1u);
    EXPECT_EQ(rig.dialogs.questionsAsked[0], "Do you want to Exit ?");
    // Leaving empties the undo store.
    EXPECT_EQ(std::filesystem::file_size(rig.folder.path() / "app" / "tmp.ctz"), 0u);
}

TEST(WindowFiles, TheRecentListOffersOpenedFilesNewestFirst) {
    WindowRig rig;
    ASSERT_TRUE(rig.window->openPath(rig.demoCopy("esfahan-reng.srv")));
    const std::string shur = rig.demoCopy();
    ASSERT_TRUE(rig.window->openPath(shur));
    rig.window->LoadFile(1);
    auto* list = rig.window->findChild<QListWidget*>("RecentList");
    ASSERT_NE(list, nullptr);
    EXPECT_FALSE(list->isHidden());
    ASSERT_GE(list->count(), 3);
    EXPECT_EQ(list->item(0)->text().toStdString(), shur);
    EXPECT_TRUE(list->item(1)->text().endsWith("esfahan-reng.srv"));
    EXPECT_EQ(list->item(list->count() - 1)->text(), "--Back--");
    // A click opens the entry.
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(1)).center());
    EXPECT_TRUE(rig.window->windowTitle().contains("esfahan-reng.srv"));
    EXPECT_TRUE(list->isHidden());
}

TEST(WindowFiles, KeyOReloadsTheFileAsItStandsOnDisk) {
    WindowRig rig;
    const std::string file = rig.demoCopy();
    ASSERT_TRUE(rig.window->openPath(file));
    Dirty(rig);
    rig.dialogs.answers = {Answer::No};
    rig.key(Qt::Key_O); // the reload runs on the key's release
    EXPECT_FALSE(rig.window->document().DirtyFlag);
    EXPECT_EQ(rig.window->document().Sheet[8].text().substr(0, 2), "23");
}

} // namespace
} // namespace tahrir::ui::test
