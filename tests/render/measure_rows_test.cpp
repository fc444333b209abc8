// Rows of the working view and the measure numbers of the walk, with the pen positions
// worked out by hand from the advances: clef row head 3 + 1 + 3 (no key), 3 more to the
// first note, 0.8 behind the tempo, 5 for a time signature, 4 a quarter, 3 an eighth, 2 a
// grace note, 1.8 either side of a barline in the one pass of the working view.

#include <gtest/gtest.h>

#include <cmath>

#include "sheet_builder.h"

namespace tahrir::render {
namespace {

using namespace test;

// A regression: the time signature repeated at the head of a row moved the position of
// the rhythm line that set it, so a click there found the line on a later row.
// The golden dump shows the body's rhythm line at 15.8 on row 1, where its own sign is drawn.
TEST(WorkingViewRows, ARepeatedTimeSignatureLeavesItsRhythmLineInPlace) {
    core::ScoreSheet sheet = Body({"RHYTM8/4"}, false);
    Repeat(sheet, "73  4", 16);
    ExpectGoldenLayout("time_signature_rows", sheet, 50, View::Working);
}

// Eighths beamed in pairs across every barline of 2/4 (a dotted quarter opens the first
// measure): wherever a row ends at a barline, it ends inside a group.
core::ScoreSheet PairsAcrossBarlines() {
    core::ScoreSheet sheet =
        MakeSheet({"       G", "TEMPO60", "RHYTM2/4", "73 12", "73  4 C"}, false);
    for (int m = 0; m < 10; ++m)
        for (const char* line : {"73  4 c", "73  8", "73  4 C"})
            Repeat(sheet, line);
    Repeat(sheet, "73  4 c");
    return sheet;
}

// A measure of quarters (lines 4..7), then sixteenths (lines 8..23) beamed four to a beat
// by the rhythm pass. In the working view they start at 35.4 (the barline at 33.6, then
// 1.8), 3 apart, and rows end at nine tenths of the width: on a page 46 wide the first row ends
// behind line 9, on one 50 wide behind line 10, inside the first group either way.
core::ScoreSheet SixteenthsAfterQuarters() {
    core::ScoreSheet sheet = Body({}, false);
    Repeat(sheet, "73  8", 4);
    Repeat(sheet, "73  2", 16);
    core::RhythmPass(sheet);
    return sheet;
}

TEST(BeamsAtRowEnds, AGroupOpenAtARowEndIsDrawnThereAndTheRestStartsANewOne) {
    struct Case {
        const char* what;
        core::ScoreSheet sheet;
        double width;
        View view;
    };
    const Case cases[] = {
        {"sixteenths split two and two", SixteenthsAfterQuarters(), 46, View::Working},
        {"sixteenths split three and one", SixteenthsAfterQuarters(), 50, View::Working},
        {"pairs across barlines, page view", PairsAcrossBarlines(), 45, View::Page},
        {"pairs across barlines, working view", PairsAcrossBarlines(), 45, View::Working},
    };
    for (const Case& c : cases) {
        const LayoutResult r = Lay(c.sheet, c.width, c.view, true);
        ASSERT_GE(r.rows, 2) << c.what;
        int beamedHeads = 0, flagged = 0, flags = 0;
        for (const DisplayItem& it : r.list.items) {
            // Rows stand 14 apart: both ends of a beam lie on the same one.
            if (it.kind == ItemKind::Stroke && it.width == WidthClass::Beam) {
                EXPECT_LT(std::abs(it.y2 - it.y), 7) << c.what << ": beam at " << it.x;
            }
            if (it.kind != ItemKind::Glyph || it.line <= 0 || it.text.empty()) continue;
            const char head = it.text[0];
            const int n = head == 'e' || head == 'E' ? 1 : head == 'x' || head == 'X' ? 2 : 0;
            beamedHeads += head == 'N', flagged += n > 0, flags += n;
        }
        // Every head under a beam has its stem; a note left alone has its flag instead, on
        // the screen and in the DXF drawing alike.
        EXPECT_EQ(Strokes(r, WidthClass::Stem), beamedHeads) << c.what;
        EXPECT_EQ(DxfFlags(r.dxf), flags) << c.what;
        // Each row end of the page view splits a pair into two notes that stand alone.
        if (c.view == View::Page) {
            EXPECT_EQ(flagged, 2 * (r.rows - 1)) << c.what;
        }
    }

    // The first break in detail, in the golden dumps: which notes stay under a beam on
    // either side of it.
    ExpectGoldenLayout("sixteenths_break_two_two", SixteenthsAfterQuarters(), 46, View::Working);
    ExpectGoldenLayout("sixteenths_break_three_one", SixteenthsAfterQuarters(), 50, View::Working);
}

} // namespace
} // namespace tahrir::render
