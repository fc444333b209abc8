#pragma once
// The page layout walk: the sheet in, a display list, the position table and the DXF
// stream out. It needs no window; back ends draw the list afterwards.

#include <string>
#include <vector>

#include "core/document.h"
#include "core/position_table.h"
#include "core/score_sheet.h"
#include "render/display_list.h"

namespace tahrir::render {

inline constexpr double ScreenUnit = 250; // twips of a staff unit on the screen
inline constexpr double PrintUnit = 100;  // twips of a staff unit on the print target
inline constexpr double FontUnit = 0.2;
inline constexpr double A4WidthTwips = 11906;
inline constexpr double A4HeightTwips = 16838;

// The page view justifies its rows in two passes; the working view fills rows to 90 % in
// one pass and shows the editing aids (measure labels, grace room of barlines, dotted captions).
enum class View { Page, Working };

struct LayoutOptions {
    View ViewMode = View::Page;
    double ZoomBase = 3;
    double PicWidthTwips = A4WidthTwips; // the picture's width before zoom
    double PageWidthUnits = 0;           // above 0: used instead of the picture's width
    double LeftMargin = 3;
    double RightMargin = 4;
    double TopMargin = 26;
    double StaffGap = 14;
    bool ShowAllLines = true;
    bool ChPrint = false;   // print mode: a second outer round draws to the print target
    bool ChPrinter = false; // the printer rather than the preview at a third of its size
    double PrinterWidthTwips = A4WidthTwips;
    double PrinterHeightTwips = A4HeightTwips;
    bool DxfEnabled = false;
    std::string ScoreFileName;                    // the DXF title
    std::string Description;                      // title lines on the print target
    std::string TextFontName{core::DefaultTextFontName};
    double StoredTempo = 60; // used when line 2 is not a tempo line
};

struct MeasureLabel {
    int number = 0;
    double x = 0, y = 0; // centre x and top, staff units
    double size = 1;     // share of the music font size
    bool visible = false;
};

struct LayoutResult {
    DisplayList list;
    core::PositionTable positions;
    std::vector<double> RowRatios; // per row from 1; element 0 unused
    int rows = 0;
    std::vector<MeasureLabel> measures; // element = number shown
    std::string dxf;                    // the last pass's stream, empty when disabled
    double PageWidthUnits = 0;
    double ZoomFactor = 0;
    double ElapsedSeconds = 0;
    // Barlines the walk drew. Not the number of measures: after a closing barline the
    // next number is placed but hidden; the measures are the labels shown.
    int MeasureNumber = 0;
    std::string TextFontName;
    double staffEnd = 0;           // x where the staves end; no drawing passes it
    std::vector<double> LineRight; // by sheet index: x where the line's drawing ends, -1 none
    bool printed = false; // the print target was drawn
    double printWidthUnits = 0, printHeightUnits = 0; // the printer's page, staff units
};

// The view set-up and both passes of the walk.
LayoutResult RefreshView(const core::ScoreSheet& sheet, const LayoutOptions& options);

// The stretch of a row from the ratio of its natural width to the page width.
double RowScaleFor(double ratio);

} // namespace tahrir::render
