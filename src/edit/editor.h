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
#include "edit/editor_state.h"
#include "edit/services.h"

namespace tahrir::edit {

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

class Editor : private EditorState {
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

    // The state the window and the command line show.
    const EditorState& state() const { return *this; }
    const core::Document& document() const { return m_doc; }
    const LayoutFacts& layoutFacts() const { return m_facts; }
    std::filesystem::path pasteFile() const { return m_appFolder / "Paste.tmp"; }

    // Settings the window hands over.
    void setTextFont(std::string name) { TextFontName = std::move(name); }
    void setLiveTempo(int tempo) { LiveTempo = tempo; }
    void setSyllableVoice(bool on) { SyllableVoiceOn = on; }
    // The range bars were dragged: the measures to play and their colours.
    void chooseMeasureRange(int start, int end);
    // The window gave the focus where `focus` asked.
    void focusTaken() { focus = Focus::Score; }
    // The page was laid out anew outside a command (a change of view or zoom).
    void positionsChanged(const core::PositionTable& positions);

    using Handler = void (Editor::*)(int key);

private:
    friend struct KeyTables;
    friend struct EditorProbe; // tests: states no key or click reaches

    core::ScoreSheet& sheet() { return m_doc.Sheet; }
    int& CurrentLine() { return m_doc.Sheet.CurrentLine; }
    int& LastLine() { return m_doc.Sheet.LastLine; }
    core::ScoreLine& PenLine() { return m_doc.Sheet.PenLine(); }

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
    LayoutFacts m_facts;
    bool m_cutMarked = false;    // the selection was cut: paste moves it
    int m_clipboardMarked = 0;   // the selection was copied (its colour), 0 when not
    bool m_direct = false; // the command ends the key press without the closing step
    int m_shift = 0;       // shift state of the key being run
};

} // namespace tahrir::edit
