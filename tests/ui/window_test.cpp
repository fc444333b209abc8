// The window driven as a user would: keys on the score view, palette and measure clicks,
// the text tool, the help hint and the view settings.

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>
#include <numeric>

#include "core/cp1256.h"
#include "edit/editor.h"
#include "editor_probe.h"
#include "ui/measure_strip.h"
#include "ui/palette_panel.h"
#include "ui/playback.h"
#include "ui/score_view.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

bool Red(const QColor& c) {
    return c.red() > 200 && c.green() < 80 && c.blue() < 80;
}
bool Blue(const QColor& c) {
    return c.blue() > 200 && c.red() < 80 && c.green() < 80;
}
bool Yellow(const QColor& c) {
    return c.red() > 200 && c.green() > 160 && c.blue() < 80;
}

// The demo open in the editor, cursor on line 4.
class WindowTest : public DemoWindow {
protected:
    void SetUp() override {
        DemoWindow::SetUp();
        rig.enterEditor();
        ASSERT_EQ(editor().state().EditMode, edit::Mode::Editor);
    }
    edit::Editor& editor() { return rig.window->editor(); }
    core::ScoreSheet& sheet() { return rig.doc().Sheet; }
    std::string line(int i) { return rig.line(i); }
    QToolButton* entry(int i) { return rig.window->palette()->entry(i); }
    ScoreView* view() { return rig.window->scoreView(); }
    const auto& positions() { return rig.window->layout().result().positions; }
    // A point on the symbol of line i.
    QPoint symbolAt(int i) {
        const auto k = static_cast<std::size_t>(i);
        return view()->toPixels(positions().LinePosX[k] + 1, positions().LinePosY[k] - 2).toPoint();
    }
    // Pixels of the painted score view (or of one row of it) that match `colour`.
    int pixels(bool (*colour)(const QColor&), int row = -1) {
        const QImage image =
            (row < 0 ? view()->grab() : view()->grab(view()->rowRect(row))).toImage();
        int n = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                n += colour(image.pixelColor(x, y));
        return n;
    }
};

TEST_F(WindowTest, KeysEditThePenUntilEnterStoresItAndTheCursorIsRedOnlyInTheEditor) {
    EXPECT_EQ(sheet().CurrentLine, 4);
    EXPECT_TRUE(rig.window->windowTitle().contains("shur-daramad.srv"));
    EXPECT_FALSE(rig.window->isWindowModified());
    EXPECT_GT(view()->width(), 600); // a page at least as wide as a staff row
    rig.key(Qt::Key_Right, Qt::NoModifier, 4);
    ASSERT_EQ(sheet().CurrentLine, 8);
    ASSERT_EQ(line(8).substr(0, 5), "23  4");
    EXPECT_GT(pixels(Red), 20);
    rig.key(Qt::Key_E, Qt::ControlModifier); // to the viewer and back
    ASSERT_EQ(editor().state().EditMode, edit::Mode::Viewer);
    EXPECT_EQ(pixels(Red), 0);
    rig.enterEditor();
    ASSERT_EQ(sheet().CurrentLine, 8);
    // Up raises the pen a step; the sheet keeps the old note until Enter.
    rig.key(Qt::Key_Up);
    EXPECT_EQ(sheet().PenLine().text().substr(0, 2), "33");
    EXPECT_EQ(line(8).substr(0, 2), "23");
    EXPECT_TRUE(rig.window->layout().penShown());
    // K makes it koron, Shift+6 a quarter; Enter stores the pen and moves on.
    rig.key(Qt::Key_K);
    rig.key(Qt::Key_AsciiCircum, Qt::ShiftModifier);
    rig.key(Qt::Key_Return);
    EXPECT_EQ(line(8).substr(0, 6), "33  8K");
    EXPECT_EQ(sheet().CurrentLine, 9);
    EXPECT_TRUE(rig.window->isWindowModified());
    rig.key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(line(8).substr(0, 5), "23  4");
    rig.key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(line(8).substr(0, 5), "33  8");
}

TEST_F(WindowTest, PaletteClicksActAsTheirKeysOrInHelpModeShowTheirHint) {
    rig.key(Qt::Key_Right, Qt::NoModifier, 4);
    // Entry 9 is Shift+8, a half note; it lights once the line holds it.
    QTest::mouseClick(entry(9), Qt::LeftButton);
    EXPECT_EQ(sheet().PenLine().text().substr(2, 3), " 16");
    rig.key(Qt::Key_Return);
    rig.key(Qt::Key_Left);
    EXPECT_TRUE(rig.window->palette()->entryLit(9));
    EXPECT_FALSE(rig.window->palette()->entryLit(7));
    // Entry 15 (K) with Ctrl writes koron for the pen's step in the key signature.
    const int step = sheet().PenLine().text()[0] - '0';
    QTest::mouseClick(entry(15), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(line(1)[static_cast<std::size_t>(step - 1)], 'K');
    // In help mode a click shows the entry's Persian hint, right to left.
    auto* hint = rig.child<QLabel>("HpLb");
    EXPECT_TRUE(hint->isHidden());
    rig.key(Qt::Key_H);
    EXPECT_FALSE(hint->isHidden());
    QTest::mouseClick(entry(40), Qt::LeftButton);
    EXPECT_EQ(hint->text().toStdString(), edit::PaletteEntryAt(40).hint);
    EXPECT_EQ(hint->layoutDirection(), Qt::RightToLeft);
    EXPECT_EQ(entry(3)->cursor().shape(), Qt::WhatsThisCursor);
    rig.key(Qt::Key_H);
    EXPECT_TRUE(hint->isHidden());
}

TEST_F(WindowTest, MeasureLabelsChooseTheRangeToPlay) {
    MeasureStrip* strip = rig.window->measureStrip();
    const auto& m = editor().state().measures;
    QTest::mouseClick(strip->label(4), Qt::LeftButton);
    EXPECT_EQ(std::pair(m.StartMess, m.EndMess), std::pair(1, 4));
    EXPECT_TRUE(strip->label(3)->styleSheet().contains("#3050e0"));
    EXPECT_FALSE(strip->label(5)->styleSheet().contains("#3050e0"));
    auto& controls = rig.window->playback().player().controls();
    EXPECT_EQ(controls.StartMeasure.load(), 1);
    EXPECT_EQ(controls.EndMeasure.load(), 4);
    QTest::mouseDClick(strip->label(6), Qt::LeftButton);
    EXPECT_EQ(std::pair(m.StartMess, m.EndMess), std::pair(6, 6));
    // Numeric minus moves to the measure before, and the start bar follows.
    rig.key(Qt::Key_Minus, Qt::KeypadModifier);
    EXPECT_EQ(m.StartMess, 5);
    EXPECT_EQ(strip->startBar()->value(), 5);
    // Dragging the start bar past the end takes the end along.
    strip->startBar()->setValue(9);
    EXPECT_EQ(std::pair(m.StartMess, m.EndMess), std::pair(9, 9));
    EXPECT_EQ(strip->endBar()->value(), 9);
}

// A regression: the strip counted the number the walk leaves after the closing barline,
// so the 13-measure demo showed 14 labels and a new 2-measure score 3. A shorter score
// drops the labels of the longer one shown before it.
TEST_F(WindowTest, TheStripShowsOneLabelForEachMeasure) {
    const MeasureStrip& strip = *rig.window->measureStrip();
    const std::pair<std::string, int> scores[] = {{"demo", 13}, {"4/4", 2}, {"3/8", 5}, {"2/4", 1}};
    for (const auto& [rhythm, count] : scores) {
        if (rhythm != "demo") {
            rig.dialogs.inputs = {std::string("60"), rhythm, std::to_string(count)};
            rig.window->NewImage();
        }
        std::vector<int> shown, expected(static_cast<std::size_t>(count));
        std::iota(expected.begin(), expected.end(), 1);
        for (int n = 1; n <= strip.labelCount(); ++n)
            if (const QLabel* label = strip.label(n)) shown.push_back(label->text().toInt());
        EXPECT_EQ(shown, expected) << rhythm;
        EXPECT_EQ(editor().state().measures.Maximum, count) << rhythm;
        EXPECT_EQ(strip.startBar()->maximum(), count) << rhythm;
        EXPECT_EQ(strip.endBar()->maximum(), count) << rhythm;
    }
}

TEST_F(WindowTest, TheTextToolEditsATextLineInPersian) {
    auto* frame = rig.child("FrameTextF6");
    auto* text = rig.child<QLineEdit>("TextF6");
    // Line 7 is the title "L^" of the first measure.
    while (sheet().CurrentLine < 7)
        rig.key(Qt::Key_Right);
    ASSERT_EQ(line(7).substr(0, 2), "L^");
    EXPECT_FALSE(frame->isHidden());
    EXPECT_EQ(text->text().toStdString(),
              core::Cp1256ToUtf8(line(7).substr(2, line(7).find_last_not_of(' ') - 1)));
    text->setText(QString::fromUtf8("شور"));
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(core::Cp1256ToUtf8(line(7)).substr(0, 2 + 6), "L^شور");
    // Away from text lines the frame goes.
    rig.key(Qt::Key_Right);
    EXPECT_TRUE(frame->isHidden());
}

TEST_F(WindowTest, WorkingViewAndZoomLayTheScoreOutAgain) {
    // A larger size keeps the picture's width: the glyphs grow and the rows reflow.
    ViewLayout& layout = rig.window->layout();
    const double ppu = layout.pixelsPerUnit();
    const int rows = layout.result().rows;
    rig.window->setZoom(6);
    EXPECT_DOUBLE_EQ(layout.pixelsPerUnit(), 2 * ppu);
    EXPECT_GT(layout.result().rows, rows);
    rig.window->setZoom(3);
    EXPECT_EQ(layout.result().rows, rows);
    const int generation = layout.generation();
    rig.window->setViewMode(render::View::Working);
    EXPECT_EQ(layout.options().ViewMode, render::View::Working);
    EXPECT_GT(layout.generation(), generation);
    // The cursor still finds its line after the new layout.
    const int before = sheet().CurrentLine;
    rig.key(Qt::Key_Right);
    EXPECT_EQ(sheet().CurrentLine, before + 1);
    EXPECT_EQ(editor().state().LineX[0],
              positions().LinePosX[static_cast<std::size_t>(before + 1)]);
}

TEST_F(WindowTest, ABandDraggedOverARowSelectsItsNotesInBlue) {
    const auto& pos = positions();
    const double y = pos.LinePosY[8];
    const double x0 = pos.LinePosX[8] - 0.5, x1 = pos.LinePosX[12] + 0.5;
    const QPoint from = view()->toPixels(x0, y - 11).toPoint(),
                 to = view()->toPixels(x1, y + 1).toPoint();
    ASSERT_EQ(view()->lineAt(view()->toUnits(from)), 0);
    const int unselectedBlue = pixels(Blue, 8);
    QTest::mousePress(view(), Qt::LeftButton, Qt::NoModifier, from);
    QMouseEvent move(QEvent::MouseMove, QPointF(to), view()->mapToGlobal(QPointF(to)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view(), &move);
    EXPECT_TRUE(editor().state().band.visible);
    QTest::mouseRelease(view(), Qt::LeftButton, Qt::NoModifier, to);
    EXPECT_FALSE(editor().state().band.visible);
    // The notes from line 8 to line 12 (which lines a band takes is the editor's own test).
    EXPECT_EQ(std::pair(editor().state().SelStart, editor().state().SelEnd), std::pair(8, 12));
    // Selected notes are painted blue, beyond the blue of the measure numbers; the viewer
    // shows the same selection in yellow.
    EXPECT_GT(pixels(Blue, 8), unselectedBlue + 20);
    rig.key(Qt::Key_E, Qt::ControlModifier);
    ASSERT_EQ(editor().state().EditMode, edit::Mode::Viewer);
    ASSERT_EQ(editor().state().SelEnd, 12);
    EXPECT_EQ(pixels(Blue, 8), unselectedBlue);
    EXPECT_GT(pixels(Yellow, 8), 20);
}

TEST_F(WindowTest, ClickedSymbolsAreCopiedAndPastedThroughTheSystemClipboard) {
    // A click on a symbol moves the cursor there.
    ASSERT_GE(positions().LinePosX[8], 0);
    EXPECT_EQ(view()->lineAt(view()->toUnits(symbolAt(8))), 8);
    QTest::mouseClick(view(), Qt::LeftButton, Qt::NoModifier, symbolAt(8));
    EXPECT_EQ(sheet().CurrentLine, 8);
    EXPECT_EQ(sheet().PenLine().text(), line(8));
    // Lines 8 to 10 selected by that click and a Shift-click.
    rig.key(Qt::Key_Escape);
    edit::EditorProbe::state(rig.window->editor()).SelStart = 8; // as a band would leave it
    QTest::mouseClick(view(), Qt::LeftButton, Qt::ShiftModifier, symbolAt(10));
    ASSERT_EQ(editor().state().SelEnd, 10);
    const std::string first = line(8).substr(0, 6); // the beam code is written anew
    rig.key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "Srv5 Paste Data");
    EXPECT_TRUE(rig.window->palette()->entryLit(70)); // paste is ready
    // Pasted before line 20, the three lines come back (in order: the editor's own test).
    while (sheet().CurrentLine < 20)
        rig.key(Qt::Key_Right);
    const int last = sheet().LastLine;
    rig.key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(sheet().LastLine, last + 3);
    EXPECT_EQ(line(20).substr(0, 6), first);
}

TEST_F(WindowTest, ViewerKeysScrollThePage) {
    rig.key(Qt::Key_E, Qt::ControlModifier);
    ASSERT_EQ(editor().state().EditMode, edit::Mode::Viewer);
    QScrollBar* bar = rig.child<QScrollArea>("PicScroll")->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    rig.key(Qt::Key_End);
    EXPECT_EQ(bar->value(), bar->maximum());
    rig.key(Qt::Key_Home);
    EXPECT_EQ(bar->value(), 0);
    rig.key(Qt::Key_PageDown);
    const int page = bar->value();
    EXPECT_GT(page, 0);
    rig.key(Qt::Key_Down);
    EXPECT_EQ(bar->value(), std::min(bar->maximum(), page + bar->singleStep()));
    rig.key(Qt::Key_PageUp, Qt::NoModifier, 2);
    EXPECT_EQ(bar->value(), 0);
}

TEST_F(WindowTest, ADoubleClickOnATempoMarkAsksForTheNewTempo) {
    int tempoLine = 0;
    for (int i = 4; i <= sheet().LastLine && tempoLine == 0; ++i)
        if (line(i).rfind("TEMPO", 0) == 0) tempoLine = i;
    ASSERT_GT(tempoLine, 0);
    ASSERT_GE(positions().LinePosX[static_cast<std::size_t>(tempoLine)], 0);
    const QPoint p = symbolAt(tempoLine);
    ASSERT_EQ(view()->lineAt(view()->toUnits(p)), tempoLine);
    rig.dialogs.inputs = {std::string("90")};
    // A real double click begins with a press and a release.
    QTest::mouseClick(view(), Qt::LeftButton, Qt::NoModifier, p);
    QTest::mouseDClick(view(), Qt::LeftButton, Qt::NoModifier, p);
    EXPECT_EQ(rig.dialogs.inputsAsked, std::vector<std::string>{"Tempo"});
    EXPECT_EQ(line(tempoLine).substr(0, 7), "TEMPO90");
}

} // namespace
} // namespace tahrir::ui::test
