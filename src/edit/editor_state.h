#pragma once
// The editor's state as the window and the command line read it: one read-only view
// instead of public fields. Only the editor's commands change it.

#include <string>
#include <string_view>
#include <vector>

#include "core/document.h"
#include "edit/line_state.h"

namespace tahrir::edit {

// Colours of labels, as the window paints them (0x00BBGGRR).
inline constexpr int ColourBlack = 0;
inline constexpr int ColourRed = 255;
inline constexpr int ColourYellow = 65535;
inline constexpr int ColourBlue = 16711680;

// Font size of the score view's labels at the default zoom.
inline constexpr double ScreenFontSize = 30;

// One line's label on the score view: its glyph and colour.
// Its place is the line's entry in `LineX` and `LineY`.
struct LineLabel {
    std::string caption;
    int colour = ColourBlack;
    double fontSize = 0;
    bool visible = false;
};

// Where the keyboard focus went when a command handed it on.
enum class Focus { Score, TextBox, CommandBox };

// The text tool and the command tool.
struct TextFrame {
    bool visible = false;
    std::string text;
    int option = -1; // OptF6 0..5, -1 for none
};
struct CommandFrame {
    bool visible = false;
    std::string text;
    int listIndex = -1; // ListLC entry, -1 for none
};

// The range of measures to play and the colours of their labels.
struct MeasureRange {
    int StartMess = 1;            // VScrollStartMess value
    int EndMess = 1;              // VScrollEndMess value
    int Maximum = 1;              // maximum of both bars, follows the last measure
    std::vector<int> LabelColour; // MeasLabel colours, index from 1
};

// The band drawn on the empty part of the view.
struct Band {
    bool visible = false;
    double startX = 0, startY = 0, left = 0, top = 0, width = 0, height = 0;
};

// What the closing step of a key press does.
enum class Outcome {
    PenToRecord,   // the pen's text goes to RCDTxt (the start value of every key)
    Resynchronise, // the cursor moved: pen, RCDTxt and the red note follow the line
    FullRefresh,   // paste, cut, undo, redo: the page is laid out again first
    StoreAnswer,   // the tempo dialog's hidden head forms: RCDTxt is stored in the line
};

// The editor check box: the viewer or the editor.
enum class Mode { Viewer, Editor };

struct EditorState {
    std::string RCDTxt;
    int AdvanceStep = 1;
    Outcome KeyOutcome = Outcome::PenToRecord;
    bool IndexStale = false;
    Mode EditMode = Mode::Viewer;
    bool HelpMode = false;
    bool RecordVisible = false;
    bool RCDTxtVisible = false; // the raw text box, shown on text lines by RecordVisible
    bool SyllableVoiceOn = false;
    int SelStart = 0;
    int SelEnd = 0;
    std::string_view HintShown; // the hint shown in HpLb, empty when hidden
    int LineStateRuns = 0;      // how often the palette read-out ran
    int LiveTempo = 60;         // VScroll3, 20..320
    int ScrollValue = 0, ScrollMax = 1;
    std::string TextFontName{core::DefaultTextFontName};
    Focus focus = Focus::Score;
    LitSet lit;
    // Each line's place in layout units; element 0 is the pen's.
    std::vector<double> LineX, LineY;
    std::vector<LineLabel> labels; // index 0 is the red cursor note
    TextFrame textFrame;
    CommandFrame commandFrame;
    MeasureRange measures;
    Band band;

    bool editing() const { return EditMode == Mode::Editor; }
};

} // namespace tahrir::edit
