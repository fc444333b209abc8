// Rows of the working view and the measure numbers of the walk, with the pen positions
// worked out by hand from the advances: clef row head 3 + 1 + 3 (no key), 3 more to the
// first note, 0.8 behind the tempo, 5 for a time signature, 4 a quarter, 3 an eighth, 2 a
// grace note, 1.8 either side of a barline in the one pass of the working view.

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "render/page_layout.h"
#include "sheet_builder.h"

namespace tahrir::render {
namespace {

using test::MakeSheet;
using test::Repeat;

LayoutResult Working(const core::ScoreSheet& sheet, double width) {
    LayoutOptions o;
    o.PageWidthUnits = width;
    o.ViewMode = 1;
    return RefreshView(sheet, o);
}

// Glyphs with this text drawn at y, to within rounding.
long GlyphsAt(const LayoutResult& r, const std::string& text, double y) {
    return std::count_if(r.list.items.begin(), r.list.items.end(), [&](const DisplayItem& it) {
        return it.kind == ItemKind::Glyph && it.text == text && std::abs(it.y - y) < 1e-9;
    });
}

// Four quarters, eight single eighths, four quarters on a page 50 wide (rows end at 45).
// Row 1: the pen is at 15.8 after the time signature; the first barline comes at 33.6 with
// room, and the pen goes on from 35.4. The eighths stand at 35.4, 38.4, 41.4; behind the
// third the pen is at 44.4 and 44.4 + 0.2 x 9 reaches 45: the row ends inside measure 2.
// Row 2 repeats the time signature and takes the five eighths left (15 to 27). Its barline
// at 31.8 compares the old row's barline 35.4 plus the width 35.4 of measure 1 with 45 and
// finds no room, since a break inside a measure keeps those two: measure 3 opens row 3.
core::ScoreSheet OverflowSheet() {
    core::ScoreSheet sheet = MakeSheet({"       G", "TEMPO60", "RHYTM4/4"}, false);
    Repeat(sheet, "73  8", 4); // lines 4..7
    Repeat(sheet, "73  4", 8); // lines 8..15
    Repeat(sheet, "73  8", 4); // lines 16..19
    return sheet;
}

TEST(WorkingViewRows, AMeasureTooLongForItsRowIsBrokenAndItsRestStandsAlone) {
    const LayoutResult r = Working(OverflowSheet(), 50);
    const auto& pos = r.positions;
    EXPECT_EQ(r.rows, 3);
    EXPECT_NEAR(pos.LinePosX[8], 35.4, 1e-9);
    EXPECT_NEAR(pos.LinePosX[10], 41.4, 1e-9);
    EXPECT_EQ(pos.LinePosY[10], 26);
    EXPECT_NEAR(pos.LinePosX[11], 15, 1e-9);
    EXPECT_EQ(pos.LinePosY[11], 40);
    EXPECT_NEAR(pos.LinePosX[15], 27, 1e-9);
    EXPECT_EQ(pos.LinePosY[15], 40);
    EXPECT_EQ(pos.LinePosY[16], 54);
    // A row broken inside a measure starts with the time signature; one broken at a barline
    // with the clef alone.
    EXPECT_EQ(GlyphsAt(r, "4", 40 - 8.5), 1);
    EXPECT_EQ(GlyphsAt(r, "4", 54 - 8.5), 0);
    // The number of measure 3 moves to the start of row 3: RowStartX 5 + 3.
    ASSERT_GE(r.measures.size(), 4u);
    EXPECT_NEAR(r.measures[3].x, 8, 1e-9);
    EXPECT_NEAR(r.measures[3].y, 54 - 6.5, 1e-9);
    // The stretch of a row broken inside a measure is page width / pen: 50 / 44.4.
    EXPECT_NEAR(r.RowRatios[1], 50 / 44.4, 1e-9);
}

TEST(WorkingViewRows, TheSameMusicInThePageViewBreaksOnlyAtBarlines) {
    LayoutOptions o;
    o.PageWidthUnits = 50;
    const LayoutResult r = RefreshView(OverflowSheet(), o);
    // Measure 2 stays whole on one row in the page view, squeezed or stretched.
    for (int i = 9; i <= 15; ++i) EXPECT_EQ(r.positions.LinePosY[i], r.positions.LinePosY[8]) << i;
}

TEST(WorkingViewRows, BarlineRecordsAreMarksThatTakeAGraceNotesRoom) {
    // "03 -1" after the full measure: the barline is drawn by the measure test on the note
    // before it, the record itself shows ")(" 2 wide in the working view and nothing in
    // the page view.
    const auto sheet = MakeSheet({"       G", "TEMPO60", "RHYTM4/4", "73 32", "03 -1", "73 32"});
    const LayoutResult work = Working(sheet, 80);
    // 15.8 + 8 for the whole note, 1.8 + 1.8 around the barline: the mark at 27.4.
    EXPECT_NEAR(work.positions.LinePosX[5], 27.4, 1e-9);
    EXPECT_NEAR(work.positions.LinePosX[6], 29.4, 1e-9);
    EXPECT_EQ(std::count_if(work.list.items.begin(), work.list.items.end(),
                            [](const DisplayItem& it) { return it.text == ")(" && it.line == 5; }),
              1);
    LayoutOptions page;
    page.PageWidthUnits = 80;
    const LayoutResult drawn = RefreshView(sheet, page);
    EXPECT_EQ(drawn.positions.LinePosX[5], -1);
}

// A regression: the time signature repeated at the head of a row moved the position of
// the rhythm line that set it, so a click there found the line on a later row.
TEST(WorkingViewRows, ARepeatedTimeSignatureLeavesItsRhythmLineInPlace) {
    core::ScoreSheet sheet = MakeSheet({"       G", "TEMPO60", "RHYTM4/4", "RHYTM8/4"}, false);
    Repeat(sheet, "73  4", 16);
    const LayoutResult r = Working(sheet, 50);
    ASSERT_GE(r.rows, 2);
    // The body's rhythm line stands at 15.8 on row 1, where its own sign is drawn.
    EXPECT_NEAR(r.positions.LinePosX[4], 15.8, 1e-9);
    EXPECT_EQ(r.positions.LinePosY[4], 26);
    EXPECT_EQ(GlyphsAt(r, "8", 40 - 8.5), 1);
}

// The numbers that the page shows, in order.
std::vector<int> Shown(const LayoutResult& r) {
    std::vector<int> numbers;
    for (const MeasureLabel& m : r.measures)
        if (m.number > 0 && m.visible) numbers.push_back(m.number);
    return numbers;
}

TEST(MeasureLabels, ThePageNumbersEachMeasureOnceAndNothingAfterTheLast) {
    struct Case {
        const char* what;
        std::vector<std::string> body;
        std::vector<int> shown;
    };
    const std::vector<Case> cases = {
        {"two full measures", {"73 32", "73 32"}, {1, 2}},
        {"a closing barline record, as new scores and the demos end",
         {"03 -1", "L^Ms=1", "73 32", "03 -1", "L^Ms=2", "73 32", "03 -1"}, {1, 2}},
        {"a measure begun after the last barline", {"73 32", "73 32", "73  8"}, {1, 2, 3}},
        {"no barline at all", {"73  8"}, {1}},
    };
    for (const Case& c : cases) {
        core::ScoreSheet sheet = MakeSheet({"       G", "TEMPO60", "RHYTM4/4"});
        for (const std::string& line : c.body) Repeat(sheet, line, 1);
        for (int view : {0, 1}) {
            LayoutOptions o;
            o.PageWidthUnits = 80;
            o.ViewMode = view;
            const LayoutResult r = RefreshView(sheet, o);
            EXPECT_EQ(Shown(r), c.shown) << c.what << ", view " << view;
        }
    }
}

} // namespace
} // namespace tahrir::render
