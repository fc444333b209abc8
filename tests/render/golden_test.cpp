// Golden files of whole layouts: display-list dumps that pin the layout decisions and the
// exact DXF text. Refreshed only with TAHRIR_UPDATE_GOLDEN=1, so every change is read.

#include <gtest/gtest.h>

#include <sstream>

#include "sheet_builder.h"

namespace tahrir::render {
namespace {

using test::MakeSheet;
using test::Repeat;

// Signs of every family in two measures: key signature, repeat, volta, tie, beams, dots,
// accidentals, a rest, a text line, a chord symbol, a tuplet and marks.
core::ScoreSheet SignsSheet() {
    return MakeSheet({"   S  KG",  "TEMPO72",   "RHYTM4/4",   "03 -1",     "L^Ms=1",    "REP{",
                      "L^Daramad", "13  4  TI", "23  4",      "33  8S",    "43 12  TR", "53  4",
                      "03 -1",     "VOL{1",     "63  8 . HC", "73  4  L3", "14  4",     "73  4",
                      "03  8",     "03 -1",     "REP}",       "L_end",     "14 32 K"});
}

// Sixteen measures on a narrow page: row breaks, the three row-scale bands, measure
// numbers moving to row starts, and an over-full measure.
core::ScoreSheet RowsSheet() {
    core::ScoreSheet sheet = MakeSheet({"       G", "TEMPO60", "RHYTM3/4"});
    for (int m = 0; m < 16; ++m) {
        Repeat(sheet, "53  8");
        Repeat(sheet, m == 5 ? "63 24" : "63  4", 2);
        Repeat(sheet, "73  8");
    }
    core::RhythmPass(sheet);
    return sheet;
}

// Rows of one, two, three and six measures, ended by spacer lines: one ratio in each band
// of the row scale, an over-full row, and margins set by control lines.
core::ScoreSheet BandsSheet() {
    core::ScoreSheet sheet = MakeSheet({"       G", "TEMPO60", "RHYTM4/4", "LCLFT=5", "LCDBL=16"});
    for (int measures : {1, 2, 3, 6}) {
        Repeat(sheet, "73 32", measures);
        Repeat(sheet, "L  ");
    }
    Repeat(sheet, "73 32");
    return sheet;
}

// One beat of 2/4 on one pitch for each figure of sub-beams (full beams and stubs at each
// level; lone members point back, the first of a group forward), a quarter, then a
// measure of four 16ths with the last tied over and four more: two groups, never one of
// eight.
core::ScoreSheet BeamsSheet() {
    core::ScoreSheet sheet = MakeSheet({"       G", "TEMPO60", "RHYTM2/4"}, false);
    for (const char* beat : {"4 2 2", "2 2 4", "2 4 2", "6 2", "3 1 4", "1 1 2 4", "2 2 2 2"})
        for (std::istringstream in(beat); in >> std::ws, !in.eof();) {
            std::string d;
            in >> d;
            Repeat(sheet, "73" + std::string(3 - d.size(), ' ') + d);
        }
    Repeat(sheet, "73  8"); // the second beat, so that the 16ths fill one measure
    for (const char* line : {"73  2", "73  2", "73  2", "73  2  TI", "73  2", "73  2", "73  2"})
        Repeat(sheet, line);
    Repeat(sheet, "73  2");
    core::RhythmPass(sheet);
    return sheet;
}

core::ScoreSheet StrayCodesSheet() {
    core::ScoreSheet sheet = MakeSheet({"       G", "TEMPO60", "RHYTM32/4"}, false);
    Repeat(sheet, "73  2 C", 15);
    for (const char* stray : {"73  2 2", "73  4 9", "73  1 7"})
        Repeat(sheet, stray);
    return sheet;
}

// Each name gives a dump file and, when the DXF stream is on, a DXF file.
TEST(Golden, WholeLayoutsMatchTheirDumps) {
    using test::Body;
    const struct {
        const char* name;
        core::ScoreSheet sheet;
        double width;
        View view;
        bool dxf;
        const char* description = "";
    } cases[] = {
        {"signs", SignsSheet(), 80, View::Page, true},
        {"rows", RowsSheet(), 45, View::Page, true},
        {"bands", BandsSheet(), 70, View::Page, false},
        {"rows_working", RowsSheet(), 45, View::Working, false},
        {"signs_working", SignsSheet(), 80, View::Working, false},
        {"beams", BeamsSheet(), 150, View::Page, false},
        // Small sheets, each pinning one decision of the walk.
        // An unknown duration draws nothing and takes no time: the halves fill the measure,
        // which is not over-full (no red) and has one final barline.
        {"unknown_duration", Body({"73 10", "73 16", "73 16"}), 60, View::Page, false},
        // The one-measure repeat draws its barline with number 0, which is label 1: the
        // label of the first measure moves there rather than a second "1" appearing.
        {"repeat_label", Body({"73 32", "REPB1", "73 32"}), 80, View::Page, false},
        // The repeat start stands before the pen, which it then moves on by 2.
        {"repeat_start", Body({"REP{", "73 32"}), 60, View::Page, false},
        // A repeat end followed by a spacer draws no sign of its own but breaks the row;
        // followed by a text it stands 5.5 over the staff base.
        {"repeat_end_spacer", Body({"73 32", "REP}", "L  ", "73 32", "73 32"}), 60, View::Page,
         false},
        {"repeat_end_text", Body({"73 32", "REP}", "L^x", "73 32"}), 60, View::Page, false},
        // The sign moves the pen 1.2 back from the barline: the next measure's number stands
        // over it, and the pen is given back when the row goes on.
        {"repeat_end_pen", Body({"73 32", "REP}", "L^x", "73 32", "73 32"}), 80, View::Page, false},
        // A measure label line has a place only in the working view.
        {"label_line", Body({"L^Ms=1", "73 32"}), 60, View::Page, false},
        {"label_line_working", Body({"L^Ms=1", "73 32"}), 60, View::Working, false},
        // In the DXF drawing marks are their first letter: plectrum strokes at height 0.8,
        // the accent and the trill at 1.2, all on the finger layer.
        {"marks", Body({"73  8  7 ", "73  8  8 ", "73  8  AC", "73  8  TR"}), 60, View::Page, true},
        // Codes a damaged file could leave: fifteen "C" in a row, then codes of other shapes;
        // every note keeps its stem (16 stems).
        {"stray_codes", StrayCodesSheet(), 60, View::Page, false},
        // Alternating, rising and falling groups, and two groups side by side: four stems,
        // each meeting a straight beam of its own group (which starts 0.02 right of an up
        // stem, 0.04 of a down one) and no shorter than 3.2, a stem of its own; a beam rises
        // at most a staff unit.
        {"beam_alternating", Body({"13  2", "63  2", "13  2", "63  2"}), 60, View::Page, false},
        {"beam_rising", Body({"13  2", "33  2", "53  2", "24  2"}), 60, View::Page, false},
        {"beam_falling", Body({"24  2", "73  2", "24  2", "73  2"}), 60, View::Page, false},
        {"beam_side_by_side", Body({"73  4", "13  4", "73  4", "13  4", "73 16"}), 60, View::Page,
         false},
        // Words over high beamed notes, over a tremolo and over a plain row: the text's box
        // is clear of every head, stem, beam and mark of its row beneath it; text only ever
        // rises from 7.5 over the staff base, and the heads under "words" lift it further.
        {"text_over_beams", Body({"L^words", "24  2", "54  2", "34  2", "64  2", "73 16"}), 60,
         View::Page, false},
        {"text_over_tremolo", Body({"L^riz", "44  8  T ", "73 24"}), 60, View::Page, false},
        {"text_over_plain_row", Body({"L-low", "13  8", "73 24"}), 60, View::Page, false},
        // Where each line's drawing ends: behind its place, the 16th behind the eighth, and
        // nothing for the header; the staff end is the page width.
        {"line_right", Body({"73  8", "73 16", "L-words", "73  8"}), 60, View::Page, false},
        // The description's two lines centred at (60 + 4) / 2, the Persian one as Unicode,
        // both above the first staff.
        {"description", Body({"73 32"}), 60, View::Page, false,
         "\xCF\xD1\xC2\xE3\xCF\r\nDaramad\r\n"},
    };
    for (const auto& c : cases)
        test::ExpectGoldenLayout(c.name, c.sheet, c.width, c.view, c.dxf, c.description);
}

} // namespace
} // namespace tahrir::render
