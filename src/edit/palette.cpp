// Palette clicks, marks, interval and finger cycles, directive lines and help mode.

#include "edit/palette.h"

#include <cctype>

#include "core/line_view.h"
#include "edit/editor.h"
#include "edit/key_codes.h"

namespace tahrir::edit {

void Editor::paletteClick(int index, int shift) {
    if (index < 0 || index >= PaletteEntries) return;
    const bool isLit = lit.test(static_cast<std::size_t>(index));
    if (HelpMode) HintShown = PaletteHint(index, isLit);
    const PaletteEntry& entry = PaletteEntryAt(index);
    if (entry.action == PaletteAction::Own) {
        // The lit pictures switch the voice and help; the idle ones run the line commands.
        if (isLit) {
            if (index == Entry::Replace) SyllableVoiceOn = false;
            if (index == Entry::Insert) SyllableVoiceOn = true;
            if (index == Entry::Delete) setHelpMode(!HelpMode); // as key H
        } else if (CurrentLine() >= 4 && editing()) {
            AdvanceStep = 1;
            if (index == Entry::Replace) CommitLineCommand();
            if (index == Entry::Insert) InsertLineCommand();
            if (index == Entry::Delete) DeleteLinesCommand();
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
    const int entry = FindMarkEntry(key, m_shift);
    if (entry < 0) return;
    const bool on = lit.test(static_cast<std::size_t>(entry));
    PenLine().set(core::NoteField::MarkCode, on ? std::string_view("  ") : PaletteEntryAt(entry).word);
    IndexStale = true;
}

// Ctrl+F1 and Ctrl+F7: "1M".."9M", "AM".."KM", then blank; committed at once.
void Editor::keyInterval(int key) {
    const char family = key == Key::F(1) ? 'M' : 'T';
    const int entry = family == 'M' ? Entry::IntervalM : Entry::IntervalT;
    core::ScoreLine& pen = PenLine();
    if (!lit.test(static_cast<std::size_t>(entry))) {
        pen.set(core::NoteField::MarkCode, std::string{'1', family});
    } else {
        const core::MarkWord mark = core::ReadNote(pen).mark;
        char c = mark.first;
        if (c >= '1' && c <= '8' && mark.second == family)
            ++c;
        else if (c == '9')
            c = 'A';
        else if (c >= 'A' && c <= 'J')
            ++c;
        else if (c >= 'K')
            c = ' ';
        pen.set(core::NoteField::MarkCode, std::string{c, c == ' ' ? ' ' : mark.second});
    }
    AdvanceStep = 0;
    RCDTxt = pen.text();
    CommitLineCommand();
}

// Ctrl+1..4: "n ", "nZ", "nB", blank; committed at once.
void Editor::keyFinger(int key) {
    const char digit = static_cast<char>(key);
    const int entry = Entry::FirstFinger + (digit - '1');
    core::ScoreLine& pen = PenLine();
    const std::string plain{digit, ' '};
    if (!lit.test(static_cast<std::size_t>(entry))) {
        pen.set(core::NoteField::MarkCode, plain);
    } else {
        const core::MarkWord mark = core::ReadNote(pen).mark;
        const char kind = static_cast<char>(std::toupper(static_cast<unsigned char>(mark.second)));
        if (std::string{mark.first, mark.second} == plain)
            pen.set(core::NoteField::MarkCode, std::string{digit, 'Z'});
        else if (kind == 'Z')
            pen.set(core::NoteField::MarkCode, std::string{digit, 'B'});
        else if (kind == 'B')
            pen.set(core::NoteField::MarkCode, "  ");
        else
            pen.set(core::NoteField::MarkCode, plain);
    }
    AdvanceStep = 0;
    RCDTxt = pen.text();
    CommitLineCommand();
}

// F1..F12: a lit directive is taken away, otherwise inserted; F6 always inserts.
void Editor::keyDirective(int key) {
    const int entry = FindDirectiveEntry(key);
    if (entry < 0) return;
    if (entry != Entry::Spacer && lit.test(static_cast<std::size_t>(entry))) {
        DeleteLinesCommand();
        return;
    }
    RCDTxt = std::string(PaletteEntryAt(entry).word);
    AdvanceStep = 1;
    InsertLineCommand();
}

void Editor::paletteHover(int index) {
    if (!HelpMode || index < 0 || index >= PaletteEntries) return;
    HintShown = PaletteHint(index, lit.test(static_cast<std::size_t>(index)));
}

void Editor::keyHelp(int) {
    setHelpMode(!HelpMode);
}

void Editor::setHelpMode(bool on) {
    HelpMode = on;
    if (!on) HintShown = {};
}

} // namespace tahrir::edit
