// The play commands run beside the window: the window keeps answering while a run plays,
// Space steps through play, pause and play again, Stop ends it; the panel's sliders and
// pictures reach the player.

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QTest>
#include <QToolButton>
#include <filesystem>
#include <gtest/gtest.h>

#include "case_files.h"
#include "edit/editor.h"
#include "ui/playback.h"
#include "ui/score_view.h"
#include "ui/tempo_knob.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

// The demo open in the viewer.
class WindowPlayback : public DemoWindow {
protected:
    Playback& playback = rig.window->playback();
    play::PlayControls& controls = playback.player().controls();
};

TEST_F(WindowPlayback, SpaceTogglesPlayAndPauseTheMarkerRunsAlongAndTheEndReturnsTheButtons) {
    auto* play = rig.child<QPushButton>("PlayCmd");
    auto* pause = rig.child<QPushButton>("PauseCmd");
    auto* label = rig.child<QLabel>("LbLPause");
    EXPECT_TRUE(play->isEnabled());
    EXPECT_FALSE(pause->isEnabled());
    playback.player().setTempo(320);

    rig.key(Qt::Key_Space);
    EXPECT_EQ(playback.status(), PlayStatus::Playing);
    EXPECT_FALSE(play->isEnabled());
    EXPECT_TRUE(pause->isEnabled());
    // The marker reaches a note line while the window's own loop keeps running.
    EXPECT_TRUE(QTest::qWaitFor([&] { return rig.window->scoreView()->playLine() > 3; }, 3000));

    rig.key(Qt::Key_Space);
    EXPECT_EQ(playback.status(), PlayStatus::Paused);
    EXPECT_FALSE(label->isHidden());
    rig.key(Qt::Key_Space);
    EXPECT_EQ(playback.status(), PlayStatus::Playing);
    EXPECT_TRUE(label->isHidden());

    QTest::mouseClick(rig.child<QPushButton>("StopCmd"), Qt::LeftButton);
    EXPECT_EQ(playback.status(), PlayStatus::Idle);
    EXPECT_TRUE(QTest::qWaitFor([&] { return rig.window->scoreView()->playLine() == 0; }, 1000));

    // A run that reaches its end returns the buttons.
    QTest::mouseDClick(rig.child("MeasLabel"), Qt::LeftButton); // only the first measure
    QTest::mouseClick(play, Qt::LeftButton);
    EXPECT_EQ(playback.status(), PlayStatus::Playing);
    EXPECT_TRUE(QTest::qWaitFor([&] { return playback.status() == PlayStatus::Idle; }, 8000));
    EXPECT_TRUE(play->isEnabled());
    EXPECT_FALSE(rig.child<QPushButton>("StopCmd")->isEnabled());
}

TEST_F(WindowPlayback, SpeakerTranspositionAndStandardTuningReachThePlayer) {
    QTest::mouseClick(rig.child("ImgSpOff"), Qt::LeftButton);
    EXPECT_EQ(controls.VolScr.load(), 90); // velocity 0: silence
    QTest::mouseClick(rig.child("ImgSpOn"), Qt::LeftButton);
    EXPECT_EQ(controls.VolScr.load(), 0);
    rig.child<QScrollBar>("HScroll1")->setValue(27);
    EXPECT_EQ(controls.Transpose.load(), 27);
    EXPECT_EQ(rig.child<QLabel>("TransposeLabel")->text(), "+3");
    QTest::mouseClick(rig.child("DiapazonImg"), Qt::LeftButton);
    EXPECT_EQ(controls.Transpose.load(), 24);
}

TEST(TempoKnob, TrackPlacesMapToTempi) {
    for (const ::tahrir::test::CaseRow& r : ::tahrir::test::ReadCases("ui/tempo_knob.txt")) {
        const std::optional<int> tempo =
            r[2] == "-" ? std::nullopt : std::optional(r.integer(2));
        EXPECT_EQ(TempoKnob::TempoAt(r.number(0), r.number(1)), tempo) << r.where;
    }
}

TEST_F(WindowPlayback, ViewerArrowsStepTheTempoAndMoveTheKnob) {
    ASSERT_EQ(rig.window->editor().state().EditMode, edit::Mode::Viewer);
    auto* bar = rig.child<QSlider>("VScroll3");
    auto* knob = rig.child<QLabel>("Image2");
    const int x66 = knob->x();
    rig.key(Qt::Key_Right);
    rig.key(Qt::Key_Period);
    EXPECT_EQ(bar->value(), 68);
    EXPECT_EQ(controls.UserTempo.load(), 68);
    // Two tempo steps are 2 / 300 of 1331 twips: about 9 twips, under a pixel less than one.
    EXPECT_NEAR(knob->x() - x66, 2.0 / 300 * 1331 / TwipsPerPixel, 1.0);
    // A drag on the track sets the bar; the editor keeps the new tempo through the next key.
    QTest::mousePress(rig.child("Image1"), Qt::LeftButton, Qt::NoModifier,
                      QPoint(static_cast<int>(1831 / TwipsPerPixel), 5));
    EXPECT_EQ(bar->value(), 320);
    rig.key(Qt::Key_Comma);
    EXPECT_EQ(bar->value(), 319);
}

QToolButton* Picture(QWidget* window, int index) {
    for (auto* b : window->findChildren<QToolButton*>("InsImage"))
        if (b->property("index").toInt() == index) return b;
    return nullptr;
}

// Pictures 8, 9 and 10 and the sung-notes box of the playback panel reach the player.
TEST_F(WindowPlayback, WavePicturesToggleTheVoicesAndTheRecordingNeedsItsFile) {
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
    const auto path = std::filesystem::path(file);
    std::filesystem::copy_file(std::string(TAHRIR_DATA_DIR) + "/Do.Wav",
                               path.parent_path() /
                                   (path.stem().string() + "-T" + std::to_string(tempo) + ".Wav"));
    QTest::qWait(800);
    EXPECT_TRUE(recording->isEnabled());
    QTest::mouseClick(recording, Qt::LeftButton);
    EXPECT_TRUE(playback.waveChosen(10) && recording->isChecked());

    rig.child<QCheckBox>("SyllableVoice")->setChecked(true);
    EXPECT_TRUE(rig.window->editor().state().SyllableVoiceOn);
}

} // namespace
} // namespace tahrir::ui::test
