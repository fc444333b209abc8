// The key map of the score view: one table per mode and shift state, read by runTable.

#include <span>

#include "edit/editor.h"
#include "edit/key_codes.h"

namespace tahrir::edit {

namespace {

struct KeyRow {
    int first; // key code range, inclusive
    int last;
    Editor::Handler run;
    bool direct; // ends the key press without the closing step
};

using E = Editor;
constexpr int L(char c) {
    return Key::Letter(c);
}

} // namespace

struct KeyTables {
    static constexpr KeyRow kPlain[] = {
        {Key::Digit(1), Key::Digit(7), &E::keyPitch, false},
        {Key::Grave, Key::Grave, &E::keyRest, false},
        {Key::Up, Key::Up, &E::keyStep, false},
        {Key::Down, Key::Down, &E::keyStep, false},
        {Key::PageUp, Key::PageDown, &E::keyStep, false},
        {Key::Left, Key::Left, &E::keyMove, false},
        {Key::Right, Key::Right, &E::keyMove, false},
        {Key::End, Key::Home, &E::keyMove, false},
        {L('D'), L('D'), &E::keyAccidental, false},
        {L('B'), L('B'), &E::keyAccidental, false},
        {L('S'), L('S'), &E::keyAccidental, false},
        {L('K'), L('K'), &E::keyAccidental, false},
        {L('N'), L('N'), &E::keyAccidental, false},
        {L('A'), L('A'), &E::keyAccidentalLine, false},
        {L('V'), L('V'), &E::keyMark, false},
        {L('C'), L('C'), &E::keyMark, false},
        {Key::F(1), Key::F(12), &E::keyDirective, false},
        {L('R'), L('R'), &E::keyRhythm, false},
        {L('T'), L('T'), &E::keyTempo, false},
        {Key::Enter, Key::Enter, &E::keyEnter, true},
        {Key::Ins, Key::Ins, &E::keyIns, true},
        {Key::Del, Key::Del, &E::keyDel, true},
        {Key::Backspace, Key::Backspace, &E::keyBackspace, true},
        {Key::Esc, Key::Esc, &E::keyEsc, false},
        {Key::Space, Key::Space, &E::keyPlay, false},
        {Key::NumPlus, Key::NumPlus, &E::keyNextMeasure, false},
        {Key::NumMinus, Key::NumMinus, &E::keyNextMeasure, false},
        {L('E'), L('E'), &E::keyOpenTool, true},
        {L('H'), L('H'), &E::keyHelp, false},
    };
    static constexpr KeyRow kShift[] = {
        {Key::Digit(0), Key::Digit(9), &E::keyDuration, false},
        {Key::Grave, Key::Grave, &E::keyDuration, false},
        {L('D'), L('D'), &E::keyMeasureAccidental, false},
        {L('B'), L('B'), &E::keyMeasureAccidental, false},
        {L('S'), L('S'), &E::keyMeasureAccidental, false},
        {L('K'), L('K'), &E::keyMeasureAccidental, false},
        {L('N'), L('N'), &E::keyMeasureAccidental, false},
        {Key::F(2), Key::F(2), &E::keyInsertText, false},
        {Key::F(4), Key::F(8), &E::keyInsertText, false},
        {L('T'), L('T'), &E::keyTranspose, false},
        {L('R'), L('R'), &E::keyShiftR, false},
        {Key::Enter, Key::Enter, &E::keyEnter, true},
        {Key::Ins, Key::Ins, &E::keyIns, true},
        {Key::Space, Key::Space, &E::keyPlay, false},
        {Key::NumPlus, Key::NumPlus, &E::keyNextMeasure, false},
        {Key::NumMinus, Key::NumMinus, &E::keyNextMeasure, false},
        {Key::Up, Key::Up, &E::keyRowMove, false},
        {Key::Down, Key::Down, &E::keyRowMove, false},
        {Key::End, Key::Home, &E::keyMove, false},
    };
    static constexpr KeyRow kCtrl[] = {
        {Key::F(1), Key::F(1), &E::keyInterval, false},
        {Key::F(7), Key::F(7), &E::keyInterval, false},
        {Key::F(2), Key::F(6), &E::keyMark, false},
        {Key::F(8), Key::F(12), &E::keyMark, false},
        {Key::Digit(1), Key::Digit(4), &E::keyFinger, false},
        {Key::Digit(0), Key::Digit(0), &E::keyMark, false},
        {Key::Digit(5), Key::Digit(9), &E::keyMark, false},
        {Key::Grave, Key::Grave, &E::keyMark, false},
        {Key::Equals, Key::Equals, &E::keyMark, false},
        {L('D'), L('D'), &E::keySignature, false},
        {L('B'), L('B'), &E::keySignature, false},
        {L('S'), L('S'), &E::keySignature, false},
        {L('K'), L('K'), &E::keySignature, false},
        {L('N'), L('N'), &E::keySignature, false},
        {L('A'), L('A'), &E::keySelectAll, false},
        {L('C'), L('C'), &E::keyCopy, false},
        {L('X'), L('X'), &E::keyCut, false},
        {L('V'), L('V'), &E::keyPaste, false},
        {L('Z'), L('Z'), &E::keyUndo, false},
        {L('Y'), L('Y'), &E::keyRedo, false},
        {L('E'), L('E'), &E::keyEditor, false},
        {L('R'), L('R'), &E::keyToggleRecord, false},
        {L('T'), L('T'), &E::keyTranspose, false},
        {Key::Up, Key::Up, &E::keyRowMove, false},
        {Key::Down, Key::Down, &E::keyRowMove, false},
        {Key::End, Key::Home, &E::keyMove, false},
        {Key::PageUp, Key::PageDown, &E::keyStep, false},
        {Key::Space, Key::Space, &E::keyPlay, false},
    };
    static constexpr KeyRow kAlt[] = {
        {Key::F(4), Key::F(4), &E::keyWindow, false},
        {L('M'), L('M'), &E::keyWindow, false},
        {L('N'), L('N'), &E::keyWindow, false},
    };
    static constexpr KeyRow kViewerPlain[] = {
        {Key::Space, Key::Space, &E::keyPlay, false},
        {Key::Esc, Key::Esc, &E::keyViewerEsc, false},
        {L('P'), L('P'), &E::keyViewerP, false},
        {Key::NumPlus, Key::NumPlus, &E::keyNextMeasure, false},
        {Key::NumMinus, Key::NumMinus, &E::keyNextMeasure, false},
        {Key::Left, Key::Left, &E::keyViewerTempo, false},
        {Key::Right, Key::Right, &E::keyViewerTempo, false},
        {Key::Comma, Key::Comma, &E::keyViewerTempo, false},
        {Key::Period, Key::Period, &E::keyViewerTempo, false},
        {Key::Up, Key::Up, &E::keyViewerScroll, false},
        {Key::Down, Key::Down, &E::keyViewerScroll, false},
        {Key::PageUp, Key::Home, &E::keyViewerScroll, false},
    };
    static constexpr KeyRow kViewerShift[] = {
        {Key::Space, Key::Space, &E::keyPlay, false},
        {Key::NumPlus, Key::NumPlus, &E::keyNextMeasure, false},
        {Key::NumMinus, Key::NumMinus, &E::keyNextMeasure, false},
    };
    static constexpr KeyRow kViewerCtrl[] = {
        {L('E'), L('E'), &E::keyEditor, false},       {L('M'), L('M'), &E::keyWindow, false},
        {L('O'), L('O'), &E::keyWindow, false},       {L('Q'), L('Q'), &E::keyWindow, false},
        {Key::Space, Key::Space, &E::keyPlay, false},
    };

    // Table of the mode and shift state; the viewer ignores states other than 0, 1, 2, 4.
    static std::span<const KeyRow> find(bool edit, int shift) {
        switch (shift) {
        case Shift::Shift:
            return edit ? std::span<const KeyRow>(kShift) : kViewerShift;
        case Shift::Ctrl:
            return edit ? std::span<const KeyRow>(kCtrl) : kViewerCtrl;
        case Shift::Alt:
            return edit ? std::span<const KeyRow>(kAlt) : std::span<const KeyRow>();
        case Shift::None:
            return edit ? std::span<const KeyRow>(kPlain) : kViewerPlain;
        default:
            return edit ? std::span<const KeyRow>(kPlain) : std::span<const KeyRow>();
        }
    }
};

// Runs the command of the key; false when no table lists it.
bool Editor::runTable(int shift, int key) {
    for (const KeyRow& row : KeyTables::find(editing(), shift)) {
        if (key < row.first || key > row.last) continue;
        m_direct = row.direct;
        (this->*row.run)(key);
        return true;
    }
    return false;
}

} // namespace tahrir::edit
