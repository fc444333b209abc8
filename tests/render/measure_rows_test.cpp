// Rows of the working view and the measure numbers of the walk, with the pen positions
// worked out by hand from the advances: clef row head 3 + 1 + 3 (no key), 3 more to the
// first note, 0.8 behind the tempo, 5 for a time signature, 4 a quarter, 3 an eighth, 2 a
// grace note, 1.8 either side of a barline in the one pass of the working view.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/rhythm_pass.h"
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

// Eighths beamed in pairs across every barline of 2/4 (a dotted quarter opens the first
// measure): wherever a row ends at a barline, it ends inside a group.
core::ScoreSheet PairsAcrossBarlines() {
    core::ScoreSheet sheet =
        MakeSheet({"       G", "TEMPO60", "RHYTM2/4", "73 12", "73  4 C"}, false);
    for (int m = 0; m < 10; ++m) {
        Repeat(sheet, "73  4 c", 1);
        Repeat(sheet, "73  8", 1);
        Repeat(sheet, "73  4 C", 1);
    }
    Repeat(sheet, "73  4 c", 1);
    return sheet;
}

// A measure of quarters (lines 4..7), then sixteenths (lines 8..23) beamed four to a beat
// by the rhythm pass. In the working view they start at 35.4 as in OverflowSheet, 3 apart,
// and rows end at nine tenths of the width: on a page 46 wide the first row ends behind
// line 9, on one 50 wide behind line 10, inside the first group either way.
core::ScoreSheet SixteenthsAfterQuarters() {
    core::ScoreSheet sheet = MakeSheet({"       G", "TEMPO60", "RHYTM4/4"}, false);
    Repeat(sheet, "73  8", 4);
    Repeat(sheet, "73  2", 16);
    core::RhythmPass(sheet);
    return sheet;
}

struct BeamCheck {
    int stems = 0, beamedHeads = 0, flagged = 0, flags = 0;
};

// Checks that no beam reaches from one row to the next, and counts stems, heads under a
// beam and notes drawn with their own flags (and those flags).
BeamCheck CheckBeams(const LayoutResult& r, const std::string& what) {
    BeamCheck c;
    for (const DisplayItem& it : r.list.items) {
        if (it.kind == ItemKind::Stroke && it.width == WidthClass::Beam) {
            // Rows stand 14 apart: both ends of a beam lie on the same one.
            EXPECT_LT(std::abs(it.y2 - it.y), 7)
                << what << ": beam from " << it.x << "," << it.y << " to " << it.x2 << "," << it.y2;
        }
        c.stems += it.kind == ItemKind::Stroke && it.width == WidthClass::Stem;
        if (it.kind != ItemKind::Glyph || it.line <= 0 || it.text.empty()) continue;
        const char head = it.text[0];
        c.beamedHeads += head == 'N';
        const int flags = head == 'e' || head == 'E' ? 1 : head == 'x' || head == 'X' ? 2 : 0;
        c.flagged += flags > 0;
        c.flags += flags;
    }
    return c;
}

int DxfFlags(const std::string& dxf) {
    int n = 0;
    for (auto at = dxf.find("  1\r\nb\r\n"); at != std::string::npos;
         at = dxf.find("  1\r\nb\r\n", at + 1))
        ++n;
    return n;
}

const DisplayItem* HeadOf(const LayoutResult& r, int line) {
    for (const DisplayItem& it : r.list.items)
        if (it.kind == ItemKind::Glyph && it.line == line) return &it;
    return nullptr;
}

TEST(BeamsAtRowEnds, AGroupOpenAtARowEndIsDrawnThereAndTheRestStartsANewOne) {
    struct Case {
        const char* what;
        core::ScoreSheet sheet;
        double width;
        int view;
    };
    const Case cases[] = {
        {"sixteenths split two and two", SixteenthsAfterQuarters(), 46, 1},
        {"sixteenths split three and one", SixteenthsAfterQuarters(), 50, 1},
        {"pairs across barlines, page view", PairsAcrossBarlines(), 45, 0},
        {"pairs across barlines, working view", PairsAcrossBarlines(), 45, 1},
    };
    for (const Case& c : cases) {
        LayoutOptions o;
        o.PageWidthUnits = c.width;
        o.ViewMode = c.view;
        o.DxfEnabled = true;
        const LayoutResult r = RefreshView(c.sheet, o);
        ASSERT_GE(r.rows, 2) << c.what;
        const BeamCheck b = CheckBeams(r, c.what);
        // Every head under a beam has its stem; a note left alone has its flag instead, on
        // the screen and in the DXF drawing alike.
        EXPECT_EQ(b.stems, b.beamedHeads) << c.what;
        EXPECT_EQ(DxfFlags(r.dxf), b.flags) << c.what;
        // Each row end of the page view splits a pair into two notes that stand alone.
        if (c.view == 0) {
            EXPECT_EQ(b.flagged, 2 * (r.rows - 1)) << c.what;
        }
    }

    // The first break in detail: which notes stay under a beam on either side of it.
    const auto text = [](const LayoutResult& r, int line) {
        const DisplayItem* it = HeadOf(r, line);
        return it ? it->text : std::string("(none)");
    };
    const LayoutResult two = Working(SixteenthsAfterQuarters(), 46);
    EXPECT_EQ(two.positions.LinePosY[9], 26);
    EXPECT_EQ(two.positions.LinePosY[10], 40);
    for (int line : {8, 9, 10, 11}) EXPECT_EQ(text(two, line), "N") << line;
    const LayoutResult one = Working(SixteenthsAfterQuarters(), 50);
    EXPECT_EQ(one.positions.LinePosY[10], 26);
    EXPECT_EQ(one.positions.LinePosY[11], 40);
    for (int line : {8, 9, 10}) EXPECT_EQ(text(one, line), "N") << line;
    EXPECT_EQ(text(one, 11), "x"); // alone on its row, with its flags
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
