// New, open, the recent list, save and leaving, with the questions each one asks.

#include <QListWidget>
#include <QTest>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "core/score_reader.h"
#include "core/score_writer.h"
#include "edit/editor.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

std::string ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The demo open in the window.
class WindowFiles : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(rig.window->openPath(file)); }
    const core::Document& doc() { return rig.window->document(); }
    std::string line(int i) { return doc().Sheet[i].text(); }
    // One edit through the keyboard: line 8 raised from 2 to 3.
    void dirty() {
        rig.enterEditor();
        rig.key(Qt::Key_Right, Qt::NoModifier, 4);
        rig.key(Qt::Key_Up);
        rig.key(Qt::Key_Return);
        ASSERT_TRUE(doc().DirtyFlag);
    }
    WindowRig rig;
    const std::string file = rig.demoCopy();
};

TEST_F(WindowFiles, EditedScoreSavedAndReadBackHoldsTheSameLines) {
    dirty();
    const std::string out = (rig.folder.path() / "saved.srv").string();
    rig.dialogs.savePaths.push_back(out);
    ASSERT_TRUE(rig.window->SaveImage());
    EXPECT_FALSE(doc().DirtyFlag);
    EXPECT_TRUE(rig.window->windowTitle().contains("saved.srv"));
    // The file reads back to the sheet the window holds, line by line.
    core::Document back;
    ASSERT_TRUE(core::ParseScore(ReadAll(out), false, back).loaded());
    ASSERT_EQ(back.Sheet.LastLine, doc().Sheet.LastLine);
    for (int i = 4; i <= back.Sheet.LastLine; ++i) {
        // Column 7 (the beam) is rebuilt by the reader; the rest must agree.
        std::string a = back.Sheet[i].text(), b = line(i);
        a.resize(32, ' ');
        b.resize(32, ' ');
        a[6] = b[6] = ' ';
        EXPECT_EQ(a, b) << "line " << i;
    }
    ASSERT_TRUE(rig.window->openPath(out));
    EXPECT_EQ(line(8).substr(0, 2), "33");
}

TEST_F(WindowFiles, CancelInTheSaveDialogStillSavesToThePresetName) {
    dirty();
    const std::string before = ReadAll(file);
    ASSERT_TRUE(rig.window->SaveImage()); // the scripted dialog answers Cancel
    EXPECT_NE(ReadAll(file), before);
    EXPECT_EQ(ReadAll(file), core::ScoreFileImage(doc()));
    EXPECT_FALSE(doc().DirtyFlag);
}

TEST_F(WindowFiles, ASaveThatFailsSaysWhyAndKeepsTheScoreOpenAndUnsaved) {
    dirty();
    // The score's file was replaced by a folder of its name while the score was open.
    std::filesystem::remove(file);
    std::filesystem::create_directories(file + "/inside");
    const std::string line8 = line(8);
    EXPECT_FALSE(rig.window->SaveImage());
    ASSERT_EQ(rig.dialogs.messages.size(), 1u);
    EXPECT_EQ(rig.dialogs.messages[0].rfind("Can't write " + file + ": ", 0), 0u) << rig.dialogs.messages[0];
    EXPECT_TRUE(std::filesystem::is_directory(file + "/inside"));
    EXPECT_TRUE(doc().DirtyFlag);
    EXPECT_TRUE(rig.window->isWindowModified());
    EXPECT_EQ(doc().CurrentFileName, file);
    EXPECT_EQ(line(8), line8);
    // Leaving asks to save again; a second failure keeps the question open until No.
    rig.dialogs.answers = {Answer::Yes, Answer::No, Answer::No};
    EXPECT_FALSE(rig.window->ExitImage());
    EXPECT_EQ(rig.dialogs.messages.size(), 2u);
}

TEST_F(WindowFiles, AFileThatCannotBeReadKeepsTheOpenScore) {
    const int last = doc().Sheet.LastLine;
    const std::string line8 = line(8);
    // More lines than the sheet holds.
    const std::string big = (rig.folder.path() / "big.srv").string();
    {
        std::ofstream out(big, std::ios::binary);
        out << "\"Sv5\"\r\n\"x\"\r\n   S   G\r\nTEMPO60\r\nRHYTM4/4\r\n";
        for (int i = 0; i < 2100; ++i) out << "13  8\r\n";
    }
    for (const std::string& bad : {big, (rig.folder.path() / "missing.srv").string(),
                                    (rig.folder.path() / "what?.srv").string()})
        EXPECT_FALSE(rig.window->openPath(bad)) << bad;
    ASSERT_EQ(rig.dialogs.messages.size(), 3u);
    EXPECT_EQ(rig.dialogs.messages[2], "Can't read File Name");
    EXPECT_EQ(doc().Sheet.LastLine, last);
    EXPECT_EQ(line(8), line8);
    EXPECT_TRUE(rig.window->windowTitle().contains("shur-daramad.srv"));
}

TEST_F(WindowFiles, NewScoreFromTheThreeQuestionsAndCancelAtTheThird) {
    rig.dialogs.inputs = {std::string("72"), std::string("3/8"), std::string("2")};
    rig.window->NewImage();
    ASSERT_EQ(rig.dialogs.inputsAsked.size(), 3u);
    EXPECT_EQ(rig.dialogs.inputsAsked[0], " Tempo = ");
    EXPECT_EQ(line(2).substr(0, 7), "TEMPO72");
    EXPECT_EQ(line(3).substr(0, 8), "RHYTM3/8");
    // Two measures of a barline, a measure number and three eighth rests.
    const int last = 3 + 2 * 5;
    EXPECT_EQ(doc().Sheet.LastLine, last);
    EXPECT_EQ(line(13).substr(0, 5), "03  4");
    EXPECT_EQ(doc().CurrentFileName, "Untitled");
    EXPECT_FALSE(doc().DirtyFlag);
    // The editor is on and Home put the cursor on the head.
    EXPECT_EQ(rig.window->editor().state().EditMode, edit::Mode::Editor);
    EXPECT_EQ(doc().Sheet.CurrentLine, 2);

    // Cancel at the third question leaves a blank sheet that still takes keys.
    rig.dialogs.inputs = {std::string("60"), std::string("4/4"), std::nullopt};
    rig.window->NewImage();
    EXPECT_EQ(doc().Sheet.LastLine, last);
    EXPECT_EQ(line(2).substr(0, 7), "TEMPO60");
    EXPECT_EQ(line(3).substr(0, 8), "RHYTM4/4");
    EXPECT_EQ(line(10).find_first_not_of(' '), std::string::npos);
    rig.enterEditor();
    rig.key(Qt::Key_End);
    rig.key(Qt::Key_5);
    rig.key(Qt::Key_Return);
    EXPECT_EQ(doc().Sheet.LastLine, last);
}

TEST_F(WindowFiles, UnsavedChangesAskBeforeTheyAreLostAndKeyOReloadsFromDisk) {
    dirty();
    // Cancel: no file dialog, the score stays dirty.
    rig.dialogs.answers = {Answer::Cancel};
    rig.window->LoadFile(0);
    EXPECT_EQ(rig.dialogs.openDialogs, 0);
    EXPECT_TRUE(doc().DirtyFlag);
    EXPECT_EQ(rig.dialogs.questionsAsked.back(), "Do you want to save ?");
    // No: the change is given up and the dialog opens.
    rig.dialogs.answers = {Answer::No};
    rig.window->LoadFile(0);
    EXPECT_EQ(rig.dialogs.openDialogs, 1);
    EXPECT_FALSE(doc().DirtyFlag);
    // Key O reloads the file as it stands on disk, on the key's release.
    ASSERT_EQ(line(8).substr(0, 2), "33");
    rig.key(Qt::Key_O);
    EXPECT_EQ(line(8).substr(0, 2), "23");
    EXPECT_FALSE(doc().DirtyFlag);
}

TEST_F(WindowFiles, ExitAsksToSaveThenToExitAlsoFromAltF4) {
    dirty();
    rig.dialogs.answers = {Answer::Cancel};
    EXPECT_FALSE(rig.window->ExitImage());
    EXPECT_TRUE(doc().DirtyFlag);
    rig.dialogs.answers = {Answer::No, Answer::No};
    EXPECT_FALSE(rig.window->ExitImage());
    EXPECT_FALSE(doc().DirtyFlag);
    // Alt+F4 asks only whether to exit, and leaves on Yes.
    rig.dialogs.questionsAsked.clear();
    rig.dialogs.answers = {Answer::No};
    rig.key(Qt::Key_F4, Qt::AltModifier);
    QApplication::processEvents();
    EXPECT_TRUE(rig.window->isVisible());
    rig.dialogs.answers = {Answer::Yes};
    rig.key(Qt::Key_F4, Qt::AltModifier);
    QApplication::processEvents();
    EXPECT_FALSE(rig.window->isVisible());
    EXPECT_EQ(rig.dialogs.questionsAsked,
              std::vector<std::string>(2, "Do you want to Exit ?"));
    // Leaving empties the undo store.
    EXPECT_EQ(std::filesystem::file_size(rig.folder.path() / "app" / "tmp.ctz"), 0u);
}

TEST_F(WindowFiles, TheRecentListOffersOpenedFilesNewestFirst) {
    ASSERT_TRUE(rig.window->openPath(rig.demoCopy("esfahan-reng.srv")));
    ASSERT_TRUE(rig.window->openPath(file));
    rig.window->LoadFile(1);
    auto* list = rig.window->findChild<QListWidget*>("RecentList");
    ASSERT_NE(list, nullptr);
    EXPECT_FALSE(list->isHidden());
    ASSERT_GE(list->count(), 3);
    EXPECT_EQ(list->item(0)->text().toStdString(), file);
    EXPECT_TRUE(list->item(1)->text().endsWith("esfahan-reng.srv"));
    EXPECT_EQ(list->item(list->count() - 1)->text(), "--Back--");
    // A click opens the entry.
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(1)).center());
    EXPECT_TRUE(rig.window->windowTitle().contains("esfahan-reng.srv"));
    EXPECT_TRUE(list->isHidden());
}

} // namespace
} // namespace tahrir::ui::test
