// The palette table, marks, interval and finger cycles, directive lines and help mode.

#include "edit/palette.h"

#include <array>
#include <cctype>

#include "edit/editor.h"
#include "edit/key_codes.h"

namespace tahrir::edit {

namespace {

constexpr int S0 = Shift::None, S1 = Shift::Shift, S2 = Shift::Ctrl;
constexpr int L(char c) {
    return Key::Letter(c);
}
constexpr int Dg(int d) {
    return Key::Digit(d);
}
constexpr int F(int n) {
    return Key::F(n);
}

constexpr std::array<PaletteEntry, PaletteEntries> kPalette = {{
    /*  0 */ {Key::Grave, S0, false, false}, {Key::Grave, S1, false, false},
    /*  2 */ {Dg(1), S1, false, false},      {Dg(2), S1, false, false},
    /*  4 */ {Dg(3), S1, false, false},      {Dg(4), S1, false, false},
    /*  6 */ {Dg(5), S1, false, false},      {Dg(6), S1, false, false},
    /*  8 */ {Dg(7), S1, false, false},      {Dg(8), S1, false, false},
    /* 10 */ {Dg(9), S1, false, false},      {Dg(0), S1, false, false},
    /* 12 */ {L('D'), S0, true, true},       {L('B'), S0, true, true},
    /* 14 */ {L('S'), S0, true, true},       {L('K'), S0, true, true},
    /* 16 */ {L('N'), S0, true, true},       {L('A'), S0, false, false},
    /* 18 */ {F(6), S0, false, true},        {F(2), S0, false, false},
    /* 20 */ {F(3), S0, false, false},       {F(4), S0, false, false},
    /* 22 */ {F(5), S0, false, false},       {F(1), S0, false, false},
    /* 24 */ {F(7), S0, false, false},       {F(8), S0, false, false},
    /* 26 */ {F(9), S0, false, false},       {F(10), S0, false, false},
    /* 28 */ {F(11), S0, false, false},      {F(12), S0, false, false},
    /* 30 */ {F(7), S2, false, false},       {F(1), S2, false, false},
    /* 32 */ {F(2), S2, false, false},       {F(3), S2, false, false},
    /* 34 */ {F(4), S2, false, false},       {F(5), S2, false, false},
    /* 36 */ {F(6), S2, false, false},       {F(8), S2, false, false},
    /* 38 */ {F(9), S2, false, false},       {F(10), S2, false, false},
    /* 40 */ {F(11), S2, false, false},      {F(12), S2, false, false},
    /* 42 */ {Dg(6), S2, false, false},      {Dg(7), S2, false, false},
    /* 44 */ {Dg(8), S2, false, false},      {Dg(9), S2, false, false},
    /* 46 */ {Key::Grave, S2, false, false}, {Key::Equals, S2, false, false},
    /* 48 */ {Dg(0), S2, false, false},      {Dg(1), S2, false, false},
    /* 50 */ {Dg(2), S2, false, false},      {Dg(3), S2, false, false},
    /* 52 */ {Dg(4), S2, false, false},      {Dg(5), S2, false, false},
    /* 54 */ {L('R'), S0, false, false},     {L('T'), S0, false, false},
    /* 56 */ {L('V'), S0, false, false},     {L('C'), S0, false, false},
    /* 58 */ {0, S0, false, false},          {0, S0, false, false},
    /* 60 */ {0, S0, false, false},          {Dg(1), S0, false, false},
    /* 62 */ {Dg(2), S0, false, false},      {Dg(3), S0, false, false},
    /* 64 */ {Dg(4), S0, false, false},      {Dg(5), S0, false, false},
    /* 66 */ {Dg(6), S0, false, false},      {Dg(7), S0, false, false},
    /* 68 */ {L('X'), S2, false, false},     {L('C'), S2, false, false},
    /* 70 */ {L('V'), S2, false, false},     {L('Z'), S2, false, false},
    /* 72 */ {L('Y'), S2, false, false},
}};

constexpr MarkKey kMarkKeys[] = {
    {F(2), S2, "M ", 32},        {F(3), S2, "8U", 33},   {F(4), S2, "8D", 34},
    {F(5), S2, "TR", 35},        {F(6), S2, "TB", 36},   {F(8), S2, "T ", 37},
    {F(9), S2, "D ", 38},        {F(10), S2, "O ", 39},  {F(11), S2, ". ", 40},
    {F(12), S2, "AC", 41},       {Dg(6), S2, "L3", 42},  {Dg(7), S2, "L5", 43},
    {Dg(8), S2, "L7", 44},       {Dg(9), S2, "L9", 45},  {Key::Grave, S2, "TI", 46},
    {Key::Equals, S2, "+ ", 47}, {Dg(0), S2, "0 ", 48},  {Dg(5), S2, "5 ", 53},
    {L('V'), S0, "7 ", 56},      {L('C'), S0, "8 ", 57},
};

constexpr DirectiveKey kDirectiveKeys[] = {
    {F(1), "REPB1   ", 23},  {F(2), "REP{    ", 19},  {F(3), "REP}    ", 20},
    {F(4), "VOL{1   ", 21},  {F(5), "VOL{2   ", 22},  {F(6), "L         ", 18},
    {F(7), "REPB2   ", 24},  {F(8), "REPS{   ", 25},  {F(9), "REPS}   ", 26},
    {F(10), "ALL8U   ", 27}, {F(11), "ALL8D   ", 28}, {F(12), "ALL8N   ", 29},
};

} // namespace

const PaletteEntry& PaletteEntryAt(int index) {
    return kPalette.at(static_cast<std::size_t>(index));
}

int PaletteHintIndex(int index, bool lit) {
    const bool shifted = (index >= 58 && index <= 60) || (index >= 68 && index <= 70);
    return !lit && shifted ? index + 10 : index;
}

const MarkKey* FindMarkKey(int key, int shift) {
    for (const MarkKey& m : kMarkKeys)
        if (m.key == key && m.shift == shift) return &m;
    return nullptr;
}

const DirectiveKey* FindDirectiveKey(int key) {
    for (const DirectiveKey& d : kDirectiveKeys)
        if (d.key == key) return &d;
    return nullptr;
}

void Editor::paletteClick(int index, int shift) {
    if (index < 0 || index >= PaletteEntries) return;
    const bool isLit = lit.test(static_cast<std::size_t>(index));
    if (HelpMode) HintShown = PaletteHintIndex(index, isLit);
    const PaletteEntry& entry = PaletteEntryAt(index);
    if (index >= 58 && index <= 60) {
        // The lit pictures switch the voice and help; the idle ones run the line commands.
        if (isLit) {
            if (index == 58) SyllableVoiceOn = false;
            if (index == 59) SyllableVoiceOn = true;
            if (index == 60) setHelpMode(!HelpMode); // as key H
        } else if (CurrentLine() >= 4 && EditMode == 1) {
            AdvanceStep = 1;
            if (index == 58) CommitLineCommand();
            if (index == 59) InsertLineCommand();
            if (index == 60) DeleteLinesCommand();
        }
        focus = Focus::Score;
        return;
    }
    const bool passShift = isLit ? entry.clickShift : entry.idleClickShift;
    keyPress(entry.key, passShift ? shift : entry.shift);
    focus = Focus::Score;
}

// Marks written on the pen only; Enter commits them. Two marks never share a note.
void Editor::keyMark(int key) {
    const MarkKey* mark = FindMarkKey(key, m_shift);
    if (!mark) return;
    const bool on = lit.test(static_cast<std::size_t>(mark->entry));
    PenLine().setField(8, on ? std::string_view("  ") : mark->word);
    IndexStale = true;
}

// Ctrl+F1 and Ctrl+F7: "1M".."9M", "AM".."KM", then blank; committed at once.
void Editor::keyInterval(int key) {
    const char family = key == Key::F(1) ? 'M' : 'T';
    const int entry = family == 'M' ? 31 : 30;
    core::ScoreLine& pen = PenLine();
    if (!lit.test(static_cast<std::size_t>(entry))) {
        pen.setField(8, std::string{'1', family});
    } else {
        char c = pen.at(8);
        if (c >= '1' && c <= '8' && pen.at(9) == family)
            ++c;
        else if (c == '9')
            c = 'A';
        else if (c >= 'A' && c <= 'J')
            ++c;
        else if (c >= 'K')
            c = ' ';
        pen.setField(8, std::string(1, c));
        if (c == ' ') pen.setField(9, " ");
    }
    AdvanceStep = 0;
    RCDTxt = pen.text();
    CommitLineCommand();
}

// Ctrl+1..4: "n ", "nZ", "nB", blank; committed at once.
void Editor::keyFinger(int key) {
    const char digit = static_cast<char>(key);
    const int entry = 49 + (digit - '1');
    core::ScoreLine& pen = PenLine();
    const std::string plain{digit, ' '};
    if (!lit.test(static_cast<std::size_t>(entry))) {
        pen.setField(8, plain);
    } else {
        const char kind = static_cast<char>(std::toupper(static_cast<unsigned char>(pen.at(9))));
        if (pen.field(8, 2) == plain)
            pen.setField(8, std::string{digit, 'Z'});
        else if (kind == 'Z')
            pen.setField(8, std::string{digit, 'B'});
        else if (kind == 'B')
            pen.setField(8, "  ");
        else
            pen.setField(8, plain);
    }
    AdvanceStep = 0;
    RCDTxt = pen.text();
    CommitLineCommand();
}

// F1..F12: a lit directive is taken away, otherwise inserted; F6 always inserts.
void Editor::keyDirective(int key) {
    const DirectiveKey* directive = FindDirectiveKey(key);
    if (!directive) return;
    if (key != Key::F(6) && lit.test(static_cast<std::size_t>(directive->entry))) {
        DeleteLinesCommand();
        return;
    }
    RCDTxt = std::string(directive->line);
    AdvanceStep = 1;
    InsertLineCommand();
}

void Editor::paletteHover(int index) {
    if (!HelpMode || index < 0 || index >= PaletteEntries) return;
    HintShown = PaletteHintIndex(index, lit.test(static_cast<std::size_t>(index)));
}

void Editor::keyHelp(int) {
    setHelpMode(!HelpMode);
}

void Editor::setHelpMode(bool on) {
    HelpMode = on;
    HintShown = on ? HintShown : -1;
}

} // namespace tahrir::edit
