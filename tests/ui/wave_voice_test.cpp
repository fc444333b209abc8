// Pictures 8, 9 and 10 and the sung-notes box of the playback panel reach the player.

#include <QCheckBox>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

#include <filesystem>

#include "edit/editor.h"
#include "ui/playback.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

QToolButton* Picture(QWidget* window, int index) {
    for (auto* b : window->findChildren<QToolButton*>("InsImage"))
        if (b->property("index").toInt() == index) return b;
    return nullptr;
}

TEST(WaveVoicePictures, ClicksToggleTheVoicesAndTheRecordingNeedsItsFile) {
    WindowRig rig;
    const std::string score = rig.demoCopy();
    ASSERT_TRUE(rig.window->openPath(score));
    Playback& playback = rig.window->playback();
    QToolButton* tar = Picture(rig.window.get(), 8);
    QToolButton* daf = Picture(rig.window.get(), 9);
    QToolButton* recording = Picture(rig.window.get(), 10);
    ASSERT_TRUE(tar && daf && recording);

    QTest::mouseClick(tar, Qt::LeftButton);
    QTest::mouseClick(daf, Qt::LeftButton);
    EXPECT_TRUE(playback.player().tarOn() && tar->isChecked());
    EXPECT_TRUE(playback.player().dafOn() && daf->isChecked());
    EXPECT_TRUE(playback.player().midi().MidiOutputOn);
    // A double click as the window system delivers it (press, release, press, double
    // click, release) is one click and the double click: the tar toggles once and the
    // MIDI instrument is left out.
    QTest::mouseClick(tar, Qt::LeftButton);
    QTest::mousePress(tar, Qt::LeftButton);
    QTest::mouseDClick(tar, Qt::LeftButton);
    QTest::mouseRelease(tar, Qt::LeftButton);
    EXPECT_FALSE(playback.player().tarOn());
    EXPECT_FALSE(playback.player().midi().MidiOutputOn);

    // No recording for this tempo: 10 stays off; with one beside the score it is taken.
    const int tempo = playback.player().controls().UserTempo.load();
    EXPECT_FALSE(recording->isEnabled());
    playback.waveClick(10);
    EXPECT_FALSE(playback.waveChosen(10));
    const auto path = std::filesystem::path(score);
    std::filesystem::copy_file(std::string(TAHRIR_DATA_DIR) + "/Do.Wav",
                               path.parent_path() / (path.stem().string() + "-T" + std::to_string(tempo) + ".Wav"));
    QTest::qWait(800);
    EXPECT_TRUE(recording->isEnabled());
    QTest::mouseClick(recording, Qt::LeftButton);
    EXPECT_TRUE(playback.waveChosen(10) && recording->isChecked());

    auto* sung = rig.window->findChild<QCheckBox*>("SyllableVoice");
    ASSERT_TRUE(sung);
    sung->setChecked(true);
    EXPECT_TRUE(rig.window->editor().state().SyllableVoiceOn);
}

} // namespace
} // namespace tahrir::ui::test
