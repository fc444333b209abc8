#include <QLabel>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <gtest/gtest.h>

#include "ui/fingering_dock.h"
#include "ui/instrument_view.h"
#include "ui/playback.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

using fingering::Instrument;

std::optional<double> CursorNote(FingeringDock& dock, Instrument i) {
    const auto& mark = dock.view(i)->cursorMark();
    return mark ? std::optional(mark->note) : std::nullopt;
}

// Chahargah on C: line 17 is the D koron of the opening figure, line 18 its C.
TEST(FingeringDock, FollowsTheCursorWithTheSoundingNote) {
    WindowRig rig;
    rig.window->openPath(rig.demoCopy("chahargah-chaharmezrab.srv"));
    rig.enterEditor();
    FingeringDock& dock = *rig.child<FingeringDock>("FingeringDock");
    while (rig.window->document().Sheet.CurrentLine < 17) rig.key(Qt::Key_Right);
    EXPECT_EQ(CursorNote(dock, Instrument::Tar), 61.5);
    EXPECT_TRUE(dock.caption().contains("course 1 fret 2 (D4 koron)")) << dock.caption().toStdString();
    // The transposition slider a whole tone up: D koron sounds as E koron, fret 5.
    auto* slider = rig.child<QScrollBar>("HScroll1");
    slider->setValue(26);
    EXPECT_TRUE(QTest::qWaitFor([&] { return CursorNote(dock, Instrument::Tar) == 63.5; }, 2000));
    EXPECT_TRUE(dock.caption().contains("course 1 fret 5 (E4 koron)")) << dock.caption().toStdString();
    slider->setValue(24);
    EXPECT_TRUE(QTest::qWaitFor([&] { return CursorNote(dock, Instrument::Tar) == 61.5; }, 2000));
    // The hang drum has no D koron: the nearest field (D4, a quarter tone up) is shown,
    // and said to be so.
    dock.tabs()->setCurrentIndex(static_cast<int>(Instrument::Hang));
    EXPECT_TRUE(dock.caption().contains("cannot be played here; nearest: field 4 (D4)"))
        << dock.caption().toStdString();
    ASSERT_TRUE(dock.view(Instrument::Hang)->cursorMark());
    EXPECT_FALSE(dock.view(Instrument::Hang)->cursorMark()->exact);

    rig.key(Qt::Key_Right);
    EXPECT_EQ(CursorNote(dock, Instrument::Tar), 60);
    EXPECT_TRUE(dock.caption().contains("field 3 (C4)")) << dock.caption().toStdString();
    // A rest or a directive marks nothing.
    while (rig.window->document().Sheet.CurrentLine > 6) rig.key(Qt::Key_Left);
    EXPECT_FALSE(CursorNote(dock, Instrument::Tar));
}

TEST(FingeringDock, MarksTheSoundingNoteDuringPlayback) {
    WindowRig rig;
    rig.window->openPath(rig.demoCopy("shur-daramad.srv"));
    FingeringDock& dock = *rig.child<FingeringDock>("FingeringDock");
    rig.window->playback().playClick();
    EXPECT_TRUE(QTest::qWaitFor([&] { return dock.caption().contains("Playing:"); }, 5000));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return dock.caption().contains(QRegularExpression("Playing:.*course \\d")); }, 5000))
        << dock.caption().toStdString();
    rig.window->playback().stopClick();
    QTest::qWait(100);
    EXPECT_FALSE(dock.caption().contains("Playing:"));
}

} // namespace
} // namespace tahrir::ui::test
