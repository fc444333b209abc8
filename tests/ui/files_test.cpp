// New, open, the recent list, save and leaving, with the questions each one asks.

#include <QListWidget>
#include <QSlider>
#include <QTest>
#include <gtest/gtest.h>

#include "core/score_writer.h"
#include "edit/editor.h"
#include "ui/playback.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

using ::tahrir::test::ReadBytes;

class WindowFiles : public DemoWindow {
protected:
    const core::Document& doc() { return rig.doc(); }
    std::string line(int i) { return rig.line(i); }
    // One edit through the keyboard: line 8 raised from 2 to 3.
    void dirty() {
        rig.enterEditor();
        rig.key(Qt::Key_Right, Qt::NoModifier, 4);
        rig.key(Qt::Key_Up);
        rig.key(Qt::Key_Return);
        ASSERT_TRUE(doc().DirtyFlag);
    }
};

// Cancel in the save dialog still saves, to the preset name; a name from the dialog
// becomes the score's and reads back with the edit.
TEST_F(WindowFiles, SaveWritesThePresetNameOnCancelOrTheNameChosen) {
    dirty();
    ASSERT_TRUE(rig.window->SaveImage());
    EXPECT_EQ(ReadBytes(file), core::ScoreFileImage(doc()));
    EXPECT_FALSE(doc().DirtyFlag);
    const std::string out = (rig.folder.path() / "saved.srv").string();
    rig.dialogs.savePaths.push_back(out);
    ASSERT_TRUE(rig.window->SaveImage());
    EXPECT_TRUE(rig.window->windowTitle().contains("saved.srv"));
    ASSERT_TRUE(rig.window->openPath(out));
    EXPECT_EQ(line(8).substr(0, 2), "33");
}

TEST_F(WindowFiles, ASaveThatFailsSaysWhyAndKeepsTheScoreOpenAndUnsaved) {
    dirty();
    // The score's file was replaced by a folder of its name while the score was open.
    std::filesystem::remove(file);
    std::filesystem::create_directories(file + "/inside");
    const std::string line8 = line(8);
    EXPECT_FALSE(rig.window->SaveImage());
    ASSERT_EQ(rig.dialogs.messages.size(), 1u);
    EXPECT_EQ(rig.dialogs.messages[0].rfind("Can't write " + file + ": ", 0), 0u)
        << rig.dialogs.messages[0];
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
    for (const char* bad : {"missing.srv", "what?.srv"})
        EXPECT_FALSE(rig.window->openPath((rig.folder.path() / bad).string())) << bad;
    ASSERT_EQ(rig.dialogs.messages.size(), 2u);
    EXPECT_EQ(rig.dialogs.messages[1], "Can't read File Name");
    EXPECT_EQ(doc().Sheet.LastLine, last);
    EXPECT_EQ(line(8), line8);
    EXPECT_TRUE(rig.window->windowTitle().contains("shur-daramad.srv"));
}

TEST_F(WindowFiles, NewScoreFromTheThreeQuestionsBringsItsTempoAndCancelAtTheThird) {
    const auto& tempo = rig.window->playback().player().controls().UserTempo;
    ASSERT_EQ(tempo.load(), 66);
    rig.dialogs.inputs = {std::string("72"), std::string("3/8"), std::string("2")};
    rig.window->NewImage();
    ASSERT_EQ(rig.dialogs.inputsAsked.size(), 3u);
    EXPECT_EQ(rig.dialogs.inputsAsked[0], " Tempo = ");
    EXPECT_EQ(line(2).substr(0, 7), "TEMPO72");
    EXPECT_EQ(line(3).substr(0, 8), "RHYTM3/8");
    EXPECT_EQ(tempo.load(), 72);
    EXPECT_EQ(rig.child<QSlider>("VScroll3")->value(), 72);
    // Two measures of a barline, a measure number and three eighth rests.
    const int last = 3 + 2 * 5;
    EXPECT_EQ(doc().Sheet.LastLine, last);
    EXPECT_EQ(doc().CurrentFileName, "Untitled");
    EXPECT_FALSE(doc().DirtyFlag);
    // The editor is on and Home put the cursor on the head.
    EXPECT_EQ(rig.window->editor().state().EditMode, edit::Mode::Editor);
    EXPECT_EQ(doc().Sheet.CurrentLine, 2);

    // Cancel at the third question leaves a blank sheet of the two answers.
    rig.dialogs.inputs = {std::string("60"), std::string("4/4"), std::nullopt};
    rig.window->NewImage();
    EXPECT_EQ(line(2).substr(0, 7), "TEMPO60");
    EXPECT_EQ(line(3).substr(0, 8), "RHYTM4/4");
    EXPECT_EQ(line(10).find_first_not_of(' '), std::string::npos);
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
    EXPECT_EQ(rig.dialogs.questionsAsked, std::vector<std::string>(2, "Do you want to Exit ?"));
    // Leaving empties the undo store.
    EXPECT_EQ(std::filesystem::file_size(rig.folder.path() / "app" / "tmp.ctz"), 0u);
}

TEST_F(WindowFiles, TheRecentListOffersOpenedFilesNewestFirst) {
    ASSERT_TRUE(rig.window->openPath(rig.demoCopy("esfahan-reng.srv")));
    ASSERT_TRUE(rig.window->openPath(file));
    rig.window->LoadFile(1);
    auto* list = rig.child<QListWidget>("RecentList");
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
