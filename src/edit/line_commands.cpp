// The three line commands and the snapshot that every one of them ends with.

#include <algorithm>
#include <string>

#include "core/rhythm_pass.h"
#include "edit/editor.h"

namespace tahrir::edit {

void Editor::TakeSnapshot() {
    core::ScoreSheet& lines = sheet();
    // Every command that changes the sheet ends here: the beams follow the new rhythm.
    core::RhythmPass(lines);
    // A new page drops the redo history.
    m_doc.UndoIndex += 1;
    m_doc.UndoTop = m_doc.UndoIndex;
    lines[0] = core::ScoreLine(core::Scratch(std::to_string(LastLine())));
    std::vector<std::string> records;
    records.reserve(static_cast<std::size_t>(LastLine()) + 1);
    for (int i = 0; i <= LastLine(); ++i) {
        std::string& text = lines[i].text();
        if (text.size() > core::RecordLength) text.resize(core::RecordLength);
        records.push_back(core::Scratch(text));
    }
    if (m_services.undo) m_services.undo->writePage(m_doc.UndoIndex, records);
    m_doc.DirtyFlag = true;
}

void Editor::linesInserted() {
    TakeSnapshot();
    relayout();
    setPenFromLine(std::min(CurrentLine(), LastLine()));
    recolourLines();
    keepCursorInView();
    refreshLineState();
}

void Editor::CommitLineCommand() {
    const int line = CurrentLine();
    const auto at = static_cast<std::size_t>(line);
    soundPen();
    labels[0].visible = false;
    LineY[at] = LineY[0];
    LineX[at] = LineX[0];
    labels[at].caption = labels[0].caption;
    sheet()[line] = core::ScoreLine(core::Scratch(RCDTxt));

    TakeSnapshot();
    relayout();

    if (line < LastLine()) {
        CurrentLine() += AdvanceStep;
        setPenFromLine(CurrentLine());
    } else {
        // The score grows by a copy of the line just entered.
        if (LastLine() >= core::MaxLines) {
            setPenFromLine(line);
            memoryFull();
            return;
        }
        LastLine() += 1;
        CurrentLine() += 1;
        const auto grown = static_cast<std::size_t>(CurrentLine());
        LineX[grown] = m_facts.leftMargin + 1;
        LineY[grown] = LineY[at];
        labels[grown] = labels[at];
        sheet()[CurrentLine()] = core::ScoreLine(core::Scratch(RCDTxt));
        setPenFromLine(CurrentLine());
    }
    keepCursorInView();
    recolourLines();
    refreshLineState();
}

void Editor::InsertLineCommand() {
    if (LastLine() >= core::MaxLines) {
        memoryFull();
        return;
    }
    const int line = CurrentLine();
    if (!sheet().insertLine(line, core::Scratch(RCDTxt))) return;
    for (int i = LastLine(); i > line; --i) {
        const auto k = static_cast<std::size_t>(i);
        labels[k] = labels[k - 1];
        LineY[k] = LineY[k - 1];
    }
    const auto last = static_cast<std::size_t>(LastLine());
    LineX[last] = m_facts.leftMargin + 1;
    const auto at = static_cast<std::size_t>(line);
    LineY[at] = LineY[0];
    LineX[at] = LineX[0];
    labels[at] = labels[0];
    labels[at].colour = ColourBlack;
    // Tempo marks are drawn smaller than the notes.
    labels[at].fontSize =
        RCDTxt.compare(0, 5, "TEMPO") == 0 ? ScreenFontSize / 2.2 : ScreenFontSize;
    soundPen();

    TakeSnapshot();
    relayout();

    CurrentLine() += AdvanceStep;
    setPenFromLine(std::min(CurrentLine(), LastLine()));
    recolourLines();
    keepCursorInView();
    refreshLineState();
}

void Editor::DeleteLinesCommand() {
    if (CurrentLine() < 4) return;
    // Line 4 is never deleted, not even after Ctrl+A.
    if (SelStart < 5) SelStart = 5;
    if (SelEnd > 0) {
        const int last = std::min(SelEnd, LastLine());
        if (last >= SelStart) sheet().removeLines(SelStart, last - SelStart + 1);
    } else if (LastLine() > 4) {
        sheet().removeLines(CurrentLine(), 1);
    }
    // A score of four lines keeps its last line as it stands.
    if (CurrentLine() > LastLine()) CurrentLine() = LastLine();
    SelStart = SelEnd = 0;

    TakeSnapshot();
    relayout();
    resynchronise();
    refreshLineState();
}

void Editor::keyEnter(int) {
    CommitLineCommand();
}
void Editor::keyIns(int) {
    InsertLineCommand();
}
void Editor::keyDel(int) {
    DeleteLinesCommand();
}

void Editor::keyBackspace(int) {
    CurrentLine() -= 1;
    DeleteLinesCommand();
}

} // namespace tahrir::edit
