// The play commands run beside the window: the window keeps answering while a run plays,
// Space steps through play, pause and play again, Stop ends it.

#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QTest>
#include <gtest/gtest.h>

#include "edit/editor.h"
#include "ui/playback.h"
#include "ui/score_view.h"
#include "ui/tempo_knob.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

// Runs the event loop until `done` or `ms` have passed.
template <typename F>
bool WaitFor(F done, int ms) {
    QElapsedTimer t;
    t.start();
    while (!done() && t.elapsed() < ms) QTest::qWait(10);
    return done();
}

TEST(WindowPlayback, SpaceTogglesPlayAndPauseAndTheMarkerRunsAlong) {
    WindowRig rig;
    ASSERT_TRUE(rig.window->openPath(rig.demoCopy()));
    Playback& playback = rig.window->playback();
    auto* play = rig.window->findChild<QPushButton*>("PlayCmd");
    auto* pause = rig.window->findChild<QPushButton*>("PauseCmd");
    auto* label = rig.window->findChild<QLabel*>("LbLPause");
    ASSERT_TRUE(play && pause && label);
    EXPECT_TRUE(play->isEnabled());
    EXPECT_FALSE(pause->isEnabled());
    playback.player().setTempo(320);

    rig.key(Qt::Key_Space);
    EXPECT_EQ(playback.status(), PlayStatus::Playing);
    EXPECT_FALSE(play->isEnabled());
    EXPECT_TRUE(pause->isEnabled());
    // The marker reaches a note line while the window's own loop keeps running.
    EXPECT_TRUE(WaitFor([&] { return rig.window->scoreView()->playLine() > 3; }, 3000));

    rig.key(Qt::Key_Space);
    EXPECT_EQ(playback.status(), PlayStatus::Paused);
    EXPECT_FALSE(label->isHidden());
    rig.key(Qt::Key_Space);
    EXPECT_EQ(playback.status(), PlayStatus::Playing);
    EXPECT_TRUE(label->isHidden());

    QTest::mouseClick(rig.window->findChild<QPushButton*>("StopCmd"), Qt::LeftButton);
    EXPECT_EQ(playback.status(), PlayStatus::Idle);
    EXPECT_TRUE(WaitFor([&] { return rig.window->scoreView()->playLine() == 0; }, 1000));
}

TEST(WindowPlayback, ARunThatReachesItsEndReturnsTheButtons) {
    WindowRig rig;
    ASSERT_TRUE(rig.window->openPath(rig.demoCopy()));
    Playback& playback = rig.window->playback();
    playback.player().setTempo(320);
    // Only the first measure.
    QTest::mouseDClick(rig.window->findChild<QWidget*>("MeasLabel"), Qt::LeftButton);
    QTest::mouseClick(rig.window->findChild<QPushButton*>("PlayCmd"), Qt::LeftButton);
    EXPECT_EQ(playback.status(), PlayStatus::Playing);
    EXPECT_TRUE(WaitFor([&] { return playback.status() == PlayStatus::Idle; }, 8000));
    EXPECT_TRUE(rig.window->findChild<QPushButton*>("PlayCmd")->isEnabled());
    EXPECT_FALSE(rig.window->findChild<QPushButton*>("StopCmd")->isEnabled());
}

TEST(WindowPlayback, SlidersStartAtTheirDefaultsAndReachThePlayer) {
    WindowRig rig;
    auto* koron = rig.window->findChild<QLabel*>("Label1");
    auto* sori = rig.window->findChild<QLabel*>("Label2");
    ASSERT_TRUE(koron && sori);
    EXPECT_EQ(koron->text(), "48");
    EXPECT_EQ(sori->text(), "80");
    auto& controls = rig.window->playback().player().controls();
    QTest::mouseClick(rig.window->findChild<QWidget*>("ImgSpOff"), Qt::LeftButton);
    EXPECT_EQ(controls.VolScr.load(), 90); // velocity 0: silence
    QTest::mouseClick(rig.window->findChild<QWidget*>("ImgSpOn"), Qt::LeftButton);
    EXPECT_EQ(controls.VolScr.load(), 0);
    auto* transpose = rig.window->findChild<QScrollBar*>("HScroll1");
    ASSERT_NE(transpose, nullptr);
    transpose->setValue(27);
    EXPECT_EQ(controls.Transpose.load(), 27);
    EXPECT_EQ(rig.window->findChild<QLabel*>("TransposeLabel")->text(), "+3");
    QTest::mouseClick(rig.window->findChild<QWidget*>("DiapazonImg"), Qt::LeftButton);
    EXPECT_EQ(controls.Transpose.load(), 24);
}

} // namespace
} // namespace tahrir::ui::test

namespace tahrir::ui::test {
namespace {

TEST(TempoKnob, TrackPlacesMapToTempiAndTheBoxEndsTheDrag) {
    EXPECT_EQ(TempoKnob::TempoAt(500, 10), 20);
    EXPECT_EQ(TempoKnob::TempoAt(1831, 10), 320);
    EXPECT_EQ(TempoKnob::TempoAt(500 + 1331 / 2.0, 10), 170);
    EXPECT_EQ(TempoKnob::TempoAt(100, 10), 20); // left of the scale: the lowest tempo
    EXPECT_FALSE(TempoKnob::TempoAt(1832, 10).has_value());
    EXPECT_FALSE(TempoKnob::TempoAt(-1, 10).has_value());
    EXPECT_FALSE(TempoKnob::TempoAt(900, 1501).has_value());
}

TEST(TempoKnob, ViewerArrowsStepTheTempoAndMoveTheKnob) {
    WindowRig rig;
    ASSERT_TRUE(rig.window->openPath(rig.demoCopy()));
    ASSERT_EQ(rig.window->editor().EditMode, 0);
    auto* bar = rig.window->findChild<QSlider*>("VScroll3");
    auto* knob = rig.window->findChild<QLabel*>("Image2");
    ASSERT_TRUE(bar && knob);
    const int x66 = knob->x();
    rig.key(Qt::Key_Right);
    rig.key(Qt::Key_Period);
    EXPECT_EQ(bar->value(), 68);
    EXPECT_EQ(rig.window->playback().player().controls().UserTempo.load(), 68);
    // Two tempo steps are 2 / 300 of 1331 twips: about 9 twips, under a pixel less than one.
    EXPECT_NEAR(knob->x() - x66, 2.0 / 300 * 1331 / TwipsPerPixel, 1.0);
    // A drag on the track sets the bar.
    auto* track = rig.window->findChild<QWidget*>("Image1");
    QTest::mousePress(track, Qt::LeftButton, Qt::NoModifier,
                      QPoint(static_cast<int>(1831 / TwipsPerPixel), 5));
    EXPECT_EQ(bar->value(), 320);
    // The editor keeps the new tempo through the next key.
    rig.key(Qt::Key_Comma);
    EXPECT_EQ(bar->value(), 319);
}

} // namespace
} // namespace tahrir::ui::test
