// Rows of the working view and the measure numbers of the walk, with the pen positions
// worked out by hand from the advances: clef row head 3 + 1 + 3 (no key), 3 more to the
// first note, 0.8 behind the tempo, 5 for a time signature, 4 a quarter, 3 an eighth, 2 a
// grace note, 1.8 either side of a barline in the one pass of the working view.

#include <gtest/gtest.h>

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

// Each golden layout shows: at least two rows; both ends of every beam on the same row
// (rows stand 14 apart); every head under a beam ("N") with its stem and a note left alone
// with its flags ("e" one, "x" two), on the screen and in the DXF drawing alike; in the page
// view each row end splitting a pair into two notes that stand alone; and at the first
// break which notes stay under a beam on either side of it.
TEST(BeamsAtRowEnds, AGroupOpenAtARowEndIsDrawnThereAndTheRestStartsANewOne) {
    const struct {
        const char* name;
        core::ScoreSheet sheet;
        double width;
        View view;
    } cases[] = {
        {"sixteenths_break_two_two", SixteenthsAfterQuarters(), 46, View::Working},
        {"sixteenths_break_three_one", SixteenthsAfterQuarters(), 50, View::Working},
        {"pairs_across_barlines", PairsAcrossBarlines(), 45, View::Page},
        {"pairs_across_barlines_working", PairsAcrossBarlines(), 45, View::Working},
    };
    for (const auto& c : cases)
        ExpectGoldenLayout(c.name, c.sheet, c.width, c.view, true);
}

} // namespace
} // namespace tahrir::render
