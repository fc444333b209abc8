#include "edit/editor.h"

#include <algorithm>
#include <cmath>

#include "core/line_kind.h"
#include "core/line_view.h"
#include "core/rhythm_pass.h"
#include "edit/key_codes.h"
#include "edit/pen_caption.h"

namespace tahrir::edit {

namespace {

// On the head lines only the rhythm, tempo and movement keys work.
bool IsHeadLineKey(int key) {
    return key == Key::Letter('R') || key == Key::Letter('T') || key == Key::Left ||
           key == Key::Right || key == Key::Up || key == Key::Down || key == Key::Home ||
           key == Key::End;
}

// Height of one staff row: lines further apart than this lie on different rows.
constexpr double kStaffRowHeight = 4;

} // namespace

Editor::Editor(core::Document& document, EditorServices services, std::filesystem::path appFolder)
    : m_doc(document), m_services(services), m_appFolder(std::move(appFolder)) {
    LineX.assign(core::SheetSize, 0.0);
    LineY.assign(core::SheetSize, 0.0);
    labels.resize(core::SheetSize);
    labels[0].colour = ColourRed;
}

void Editor::documentReplaced() {
    SelStart = SelEnd = 0;
    m_cutMarked = false;
    m_clipboardMarked = 0;
    m_doc.UndoIndex = 0;
    TakeSnapshot(); // page 1 holds the score as opened
    m_doc.DirtyFlag = false;
    relayout();
    if (CurrentLine() > LastLine()) CurrentLine() = LastLine();
    if (CurrentLine() >= 1) setPenFromLine(CurrentLine());
}

void Editor::keyPress(int key, int shift) {
    IndexStale = false;
    if (CurrentLine() < 4 && !IsHeadLineKey(key)) {
        focus = Focus::Score;
        return;
    }
    AdvanceStep = 1;
    m_direct = false;
    if (!editing()) {
        m_shift = shift;
        runTable(shift, key);
        focus = Focus::Score;
        return;
    }
    keepCursorInView();
    KeyOutcome = Outcome::PenToRecord;
    const int table =
        (shift == Shift::Shift || shift == Shift::Ctrl || shift == Shift::Alt) ? shift : 0;
    if (table == 0 && PenLine().size() < 6) PenLine().text() += "   ";
    m_shift = table;
    const bool listed = runTable(table, key);
    if (listed && m_direct) return;
    closingStep();
    if (IndexStale) refreshLineState();
    focus = Focus::Score;
}

void Editor::closingStep() {
    switch (KeyOutcome) {
    case Outcome::Resynchronise:
        resynchronise();
        break;
    case Outcome::FullRefresh:
        relayout();
        resynchronise();
        refreshLineState();
        break;
    case Outcome::StoreAnswer:
        sheet()[CurrentLine()] = core::Scratch(RCDTxt);
        labels[static_cast<std::size_t>(CurrentLine())].caption = labels[0].caption;
        CommitLineCommand();
        break;
    case Outcome::PenToRecord:
        RCDTxt = PenLine().text();
        break;
    }
}

void Editor::resynchronise() {
    if (CurrentLine() > LastLine()) CurrentLine() = LastLine();
    if (CurrentLine() < 1) CurrentLine() = 1;
    setPenFromLine(CurrentLine());
    recolourLines();
    keepCursorInView();
}

// Copies line `line` into the pen, RCDTxt and the red cursor note, and shows the frames.
void Editor::setPenFromLine(int line) {
    const auto i = static_cast<std::size_t>(line);
    RCDTxt = sheet()[line].text();
    PenLine() = sheet()[line];
    LineX[0] = LineX[i];
    LineY[0] = LineY[i];
    LineLabel& pen = labels[0];
    pen.visible = true;
    pen.caption = LineCaption(sheet()[line].text());
    pen.fontSize = labels[i].fontSize;
    pen.colour = ColourRed;
    showTextFrames();
}

void Editor::recolourLines() {
    const int selected = editing() ? ColourBlue : ColourYellow;
    for (int i = 4; i <= LastLine(); ++i) {
        const bool in = SelEnd > 0 && i >= SelStart && i <= SelEnd;
        labels[static_cast<std::size_t>(i)].colour = in ? selected : ColourBlack;
    }
}

void Editor::refreshLineState() {
    const std::string& line = sheet()[CurrentLine()].text();
    lit = ShowLineState(line, lit);
    ++LineStateRuns;
    const int step = SyllableStep(line);
    if (SyllableVoiceOn && step > 0 && m_services.auditioner)
        m_services.auditioner->speakStep(step);
}

void Editor::keepCursorInView() {
    const int line = CurrentLine();
    if (line <= 0 || LineX[static_cast<std::size_t>(line)] <= 0) return;
    const double top = LineY[static_cast<std::size_t>(line)] + 3;
    ScrollValue = std::clamp(static_cast<int>(std::floor(top / 10)), 0, std::max(ScrollMax, 0));
}

void Editor::relayout() {
    core::PositionTable positions;
    if (m_services.layout) m_facts = m_services.layout->relayout(sheet(), positions);
    for (int i = 1; i <= core::MaxLines; ++i) {
        const auto k = static_cast<std::size_t>(i);
        LineLabel& label = labels[k];
        if (i > LastLine()) {
            label.visible = false;
            continue;
        }
        LineX[k] = positions.LinePosX[k];
        LineY[k] = positions.LinePosY[k];
        label.caption = LineCaption(sheet()[i].text());
        label.fontSize =
            core::IsTempoLine(sheet()[i].text()) ? ScreenFontSize / 2.2 : ScreenFontSize;
        label.visible = LineX[k] >= 0;
    }
    measures.Maximum = std::max(1, m_facts.measureCount);
    measures.LabelColour.resize(static_cast<std::size_t>(measures.Maximum) + 1, ColourYellow);
    measures.StartMess = std::min(measures.StartMess, measures.Maximum);
    measures.EndMess = std::min(measures.EndMess, measures.Maximum);
    colourMeasures(measures.StartMess, measures.EndMess);
    ScrollMax = std::max(
        1, static_cast<int>(
               positions.LinePosY[static_cast<std::size_t>(std::max(LastLine(), 0))] / 10) +
               1);
}

void Editor::positionsChanged(const core::PositionTable& positions) {
    for (int i = 1; i <= LastLine(); ++i) {
        const auto k = static_cast<std::size_t>(i);
        LineX[k] = positions.LinePosX[k];
        LineY[k] = positions.LinePosY[k];
        labels[k].visible = LineX[k] >= 0;
    }
    const auto cur = static_cast<std::size_t>(std::clamp(CurrentLine(), 0, core::MaxLines));
    LineX[0] = LineX[cur];
    LineY[0] = LineY[cur];
}

// Sounds the pen, element 0 of the sheet: a directive inserted while the cursor stands on
// a note sounds that note, as does the key signature written from it.
void Editor::soundPen() {
    if (!m_services.auditioner || m_services.auditioner->busy()) return;
    const core::NoteView view = core::ReadNote(PenLine());
    NoteSound note;
    note.step = view.step;
    note.octave = view.octave;
    note.pitched = view.pitched ? 1 : 0;
    note.accidental = std::string{' ', view.beam, view.accidentalLetter};
    note.mark = std::string{view.mark.first, view.mark.second};
    m_services.auditioner->soundNote(note);
}

void Editor::memoryFull() {
    if (m_services.host) m_services.host->messageBox("Memory full!");
}

bool Editor::penPitched() const {
    return core::ReadNote(m_doc.Sheet.PenLine()).step > 0;
}

void Editor::editorClick() {
    if (editing()) {
        EditMode = Mode::Viewer;
        textFrame.visible = false;
        commandFrame.visible = false;
        labels[0].visible = false;
        recolourLines();
        return;
    }
    EditMode = Mode::Editor;
    if (CurrentLine() < 4 || CurrentLine() > LastLine()) CurrentLine() = 4;
    // Beam codes are written anew by the rhythm pass; line 1's column 7 is the key signature.
    for (int i = 2; i <= LastLine(); ++i) {
        core::ScoreLine& line = sheet()[i];
        const core::LineKind kind = core::ClassifyLine(line.text());
        const bool directive = kind == core::LineKind::DirectiveLine;
        if (line.size() > 7 && !directive && !line.startsWith("L")) line.set(core::NoteField::BeamCode, " ");
    }
    core::RhythmPass(sheet());
    resynchronise();
    refreshLineState();
}

// ---- cursor movement ----

void Editor::keyMove(int key) {
    int& line = CurrentLine();
    switch (key) {
    case Key::Right:
        if (line >= LastLine()) return;
        ++line;
        break;
    case Key::Left:
        if (line <= 2) return;
        --line;
        break;
    case Key::Home:
        line = 2;
        break;
    case Key::End:
        line = LastLine();
        while (LineX[static_cast<std::size_t>(line)] <= 0 && line > 4)
            --line;
        break;
    default:
        return;
    }
    IndexStale = true;
    KeyOutcome = Outcome::Resynchronise;
}

// Shift or Ctrl with Up or Down: to the nearest line straight above or below the pen.
void Editor::keyRowMove(int key) {
    int& line = CurrentLine();
    const double x0 = LineX[0];
    const double y0 = LineY[0];
    auto above = [&](int i) {
        const auto k = static_cast<std::size_t>(i);
        return std::abs(LineX[k] - x0) <= 3 && LineY[k] < y0 - kStaffRowHeight;
    };
    auto below = [&](int i) {
        const auto k = static_cast<std::size_t>(i);
        return std::abs(LineX[k] - x0) <= 3 && LineY[k] > y0 + kStaffRowHeight;
    };
    if (key == Key::Up) {
        while (line > 4)
            if (above(--line)) break;
    } else {
        while (line < LastLine() - 1)
            if (below(++line)) break;
    }
    IndexStale = true;
    KeyOutcome = Outcome::Resynchronise;
}

void Editor::moveCursorTo(int line) {
    for (int i = std::max(SelStart, 1); i <= std::min(SelEnd, LastLine()); ++i)
        labels[static_cast<std::size_t>(i)].colour = ColourBlack;
    SelStart = SelEnd = 0;
    CurrentLine() = line;
    resynchronise();
    if (editing()) {
        refreshLineState();
        focus = Focus::Score;
    }
}

// ---- small toggles and window keys ----

void Editor::keyToggleRecord(int) {
    RecordVisible = !RecordVisible;
}
void Editor::keyShiftR(int) {
    IndexStale = true;
}
void Editor::keyEditor(int) {
    editorClick();
}

void Editor::keyPlay(int) {
    Auditioner* player = m_services.auditioner;
    if (!player) return;
    if (m_shift == Shift::None)
        player->playPause();
    else if (m_shift == Shift::Shift && editing())
        player->playFrom(CurrentLine());
    else
        player->playFromStart();
}

void Editor::keyWindow(int key) {
    EditorHost* host = m_services.host;
    if (!host) return;
    if (key == Key::F(4) || key == Key::Letter('Q'))
        host->exitRequested();
    else if (key == Key::Letter('O'))
        host->loadFileRequested();
    else if (key == Key::Letter('M') && m_shift == Shift::Ctrl)
        host->instrumentClick(10);
    else if (key == Key::Letter('M'))
        host->toggleMidiIn();
    else if (key == Key::Letter('N'))
        host->toggleMicIn();
}

void Editor::keyViewerEsc(int) {
    if (m_services.auditioner) m_services.auditioner->stopAllNotes();
    SelStart = SelEnd = 0;
    for (int i = 1; i <= LastLine(); ++i)
        labels[static_cast<std::size_t>(i)].colour = ColourBlack;
}

// The playback check box it once switched is not on this window; the notes still stop.
void Editor::keyViewerP(int) {
    if (m_services.auditioner) m_services.auditioner->stopAllNotes();
}

void Editor::keyViewerTempo(int key) {
    const bool down = key == Key::Left || key == Key::Comma;
    LiveTempo = std::clamp(LiveTempo + (down ? -1 : 1), 20, 320);
}

void Editor::keyViewerScroll(int key) {
    constexpr int kLargeChange = 10;
    int value = ScrollValue;
    if (key == Key::Up)
        value -= 1;
    else if (key == Key::Down)
        value += 1;
    else if (key == Key::PageUp)
        value -= kLargeChange;
    else if (key == Key::PageDown)
        value += kLargeChange;
    else if (key == Key::Home)
        value = 0;
    else if (key == Key::End)
        value = ScrollMax;
    ScrollValue = std::clamp(value, 0, ScrollMax);
}

double KnobPosition(int tempo) {
    return (tempo - 20) / 300.0 * 1331 + 500;
}

} // namespace tahrir::edit
