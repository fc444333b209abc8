#pragma once
// The editor without widgets: the pen, the cursor, the key map, the line commands, the
// palette, selection, clipboard, undo, measure range, mouse and text tools. The window
// shows this state; the command line drives it with key tokens.

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "core/document.h"
#include "core/position_table.h"
#include "edit/line_state.h"
#include "edit/services.h"

namespace tahrir::edit {

// Colours of labels, as the window paints them (0x00BBGGRR).
inline constexpr int ColourBlack = 0;
inline constexpr int ColourRed = 255;
inline constexpr int ColourYellow = 65535;
inline constexpr int ColourBlue = 16711680;

// Font size of the score view's labels at the default zoom.
inline constexpr double ScreenFontSize = 30;

// One line's label on the score view: its glyph, colour and place in layout units.
struct LineLabel {
    std::string caption;
    int colour = ColourBlack;
    double left = 0;
    double top = 0;
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

// The services the editor calls; any may be left out (then nothing is drawn or sounded).
struct EditorServices {
    LayoutService* layout = nullptr;
    Auditioner* auditioner = nullptr;
    Clipboard* clipboard = nullptr;
    EditorHost* host = nullptr;
    UndoPages* undo = nullptr;
};

// Position of the tempo slider's knob for a live tempo.
double KnobPosition(int tempo);

// The palette's list of command keywords for the command tool.
extern const std::array<const char*, 11> kCommandList;

class Editor {
public:
    Editor(core::Document& document, EditorServices services, std::filesystem::path appFolder);

    // The score view's key press: a virtual key number and a shift state (0, 1, 2, 4).
    void keyPress(int key, int shift);
    // A click on palette entry `index`: reaches the lit picture when the entry is lit.
    void paletteClick(int index, int shift);

    // The editor check box.
    void editorClick();
    // After a load or a new score: page 1 of the undo store holds the score as opened.
    void documentReplaced();

    // Mouse editing.
    void labelMouseDown(int line, int button, int shift);
    void labelClick(int line);
    void labelDoubleClick(int line);
    void picMouseDown(double x, double y);
    void picMouseMove(double x, double y, bool buttonDown);
    void picMouseUp();
    void measureDoubleClick(int measure);
    void measureMouseDown(int measure, int button, int shift);

    // Text and command tools.
    void textToolApply(const std::string& text, int option); // CmdTextF6 and Enter in TextF6
    void commandToolApply(const std::string& text);          // CmdOkCom
    void commandBoxEnter();                                  // Enter in TxtCom
    void commandListClick(int index);                        // ListLC
    // The pointer over a palette entry: in help mode its hint is shown.
    void paletteHover(int index);

    // The line commands, reading RCDTxt, CurrentLine and AdvanceStep.
    void InsertLineCommand();
    void CommitLineCommand();
    void DeleteLinesCommand();
    void TakeSnapshot();
    // Lines written into the sheet from outside (the transcription window): one undo
    // step, the layout and the pen brought up to them.
    void linesInserted();
    void WritePasteFile();

    // State shared with the window.
    std::string RCDTxt;
    int AdvanceStep = 1;
    int KeyOutcome = -4;
    bool IndexStale = false;
    int EditMode = 0;
    bool HelpMode = false;
    bool RecordVisible = false;
    bool RCDTxtVisible = false; // the raw text box, shown on text lines by RecordVisible
    bool DescriptionVisible = false; // the score's description panel, shown while editing
    bool SyllableVoiceOn = false;
    int ViewCheck = 0; // the view check box that key L switches
    int SelStart = 0;
    int SelEnd = 0;
    bool CutMarked = false;
    int ClipboardMarked = 0;
    int HintShown = -1;    // hint index shown in HpLb, -1 when hidden
    int LineStateRuns = 0; // how often the palette read-out ran
    int LiveTempo = 60;    // VScroll3, 20..320
    int ScrollValue = 0, ScrollMax = 1;
    std::string TextFontName = "Arabic Transparent";
    Focus focus = Focus::Score;
    LitSet lit;
    std::vector<double> LineX, LineY;
    std::vector<LineLabel> labels; // index 0 is the red cursor note
    TextFrame textFrame;
    CommandFrame commandFrame;
    MeasureRange measures;
    Band band;

    core::Document& document() { return m_doc; }
    core::ScoreSheet& sheet() { return m_doc.Sheet; }
    int& CurrentLine() { return m_doc.Sheet.CurrentLine; }
    int& LastLine() { return m_doc.Sheet.LastLine; }
    core::ScoreLine& PenLine() { return m_doc.Sheet.PenLine(); }
    const core::PositionTable& positions() const { return m_positions; }
    const LayoutFacts& layoutFacts() const { return m_facts; }
    std::filesystem::path pasteFile() const { return m_appFolder / "Paste.tmp"; }

    using Handler = void (Editor::*)(int key);

private:
    friend struct KeyTables;

    // Decoding and closing.
    bool runTable(int table, int key);
    void closingStep();
    void resynchronise();
    void keepCursorInView();
    void recolourLines();
    void refreshLineState();
    void showTextFrames();
    void setPenFromLine(int line);
    void relayout();
    void soundPen();
    void memoryFull();
    bool penPitched() const;

    // Cursor movement.
    void keyMove(int key);
    void keyRowMove(int key);
    // Note entry.
    void keyPitch(int key);
    void keyRest(int key);
    void keyDuration(int key);
    void keyStep(int key);
    void keyAccidental(int key);
    void keyMeasureAccidental(int key);
    void keyAccidentalLine(int key);
    void keySignature(int key);
    void insertAccidentalLine(char letter);
    // Palette and marks.
    void keyMark(int key);
    void keyInterval(int key);
    void keyFinger(int key);
    void keyDirective(int key);
    void keyInsertText(int key);
    void keyHelp(int key);
    void setHelpMode(bool on);
    // Line commands by key.
    void keyEnter(int key);
    void keyIns(int key);
    void keyDel(int key);
    void keyBackspace(int key);
    void keyOpenTool(int key);
    // Selection, clipboard, undo.
    void keyEsc(int key);
    void keySelectAll(int key);
    void keyCopy(int key);
    void keyCut(int key);
    void keyPaste(int key);
    void keyUndo(int key);
    void keyRedo(int key);
    void openGap(int n);
    bool restorePage(int page);
    bool externalPaste();
    // Measures.
    void keyNextMeasure(int key);
    void keyRhythm(int key);
    void keyTempo(int key);
    void keyTranspose(int key);
    void insertAndAsk(const std::string& text);
    void tempoDialog(int line);
    void rhythmDialog(int line);
    void colourMeasures(int from, int to);
    // Small toggles and window keys.
    void keyToggleRecord(int key);
    void keyShiftR(int key);
    void keyViewCheck(int key);
    void keyEditor(int key);
    void keyPlay(int key);
    void keyWindow(int key);
    void keyViewerEsc(int key);
    void keyViewerTempo(int key);
    void keyViewerScroll(int key);
    void keyViewerP(int key);
    void moveCursorTo(int line);
    bool labelShown(int line) const;

    core::Document& m_doc;
    EditorServices m_services;
    std::filesystem::path m_appFolder;
    core::PositionTable m_positions;
    LayoutFacts m_facts;
    bool m_direct = false; // the command ends the key press without the closing step
    int m_shift = 0;       // shift state of the key being run
};

} // namespace tahrir::edit
