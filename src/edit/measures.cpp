// The range of measures, the rhythm and tempo keys with their dialogs, and octave moves
// of the selected lines.

#include <algorithm>
#include <cmath>

#include "core/line_kind.h"
#include "core/line_view.h"
#include "core/load_file.h"
#include "core/text_input.h"
#include "edit/editor.h"
#include "edit/key_codes.h"

namespace tahrir::edit {

using core::NumberText;

void Editor::colourMeasures(int from, int to) {
    auto& colour = measures.LabelColour;
    colour.resize(static_cast<std::size_t>(measures.Maximum) + 1, ColourYellow);
    for (int m = 1; m <= measures.Maximum; ++m)
        colour[static_cast<std::size_t>(m)] = m >= from && m <= to ? ColourBlue : ColourYellow;
}

void Editor::chooseMeasureRange(int start, int end) {
    measures.StartMess = start;
    measures.EndMess = end;
    colourMeasures(start, end);
}

void Editor::measureDoubleClick(int measure) {
    if (m_services.auditioner && m_services.auditioner->busy()) return;
    const int m = std::clamp(measure, 1, measures.Maximum);
    measures.StartMess = measures.EndMess = m;
    colourMeasures(m, m);
    SelEnd = SelStart = 0;
    m_clipboardMarked = 0;
    recolourLines();
}

void Editor::measureMouseDown(int measure, int button, int shift) {
    if (m_services.auditioner && m_services.auditioner->busy()) return;
    MeasureRange& r = measures;
    if (r.Maximum < measure) r.Maximum = measure;
    if (button != 1)
        r.EndMess = measure;
    else if (measure < r.EndMess)
        r.StartMess = measure;
    else if (measure > r.EndMess)
        r.EndMess = measure;
    if (shift == Shift::Shift) {
        r.StartMess = 1;
        r.EndMess = r.Maximum;
    }
    // An end left before the start is an empty range until the user mends it.
    colourMeasures(r.StartMess, r.EndMess);
    SelEnd = SelStart = 0;
    recolourLines();
}

// Numeric + and -: the next or previous measure, with Shift the range grows at that end.
void Editor::keyNextMeasure(int key) {
    const bool next = key == Key::NumPlus;
    const int m = next ? measures.EndMess + 1 : measures.StartMess - 1;
    if (m_shift != Shift::Shift) {
        measureDoubleClick(m);
        return;
    }
    if (m >= 1 && m <= measures.Maximum) measureMouseDown(m, 1, 0);
}

void Editor::keyRhythm(int) {
    if (lit.test(Entry::Rhythm)) {
        labelDoubleClick(CurrentLine());
        return;
    }
    if (CurrentLine() <= 3) return;
    insertAndAsk(m_facts.rhythmWord.empty() ? "RHITM32/32" : m_facts.rhythmWord);
}

void Editor::keyTempo(int) {
    if (lit.test(Entry::Tempo)) {
        labelDoubleClick(CurrentLine());
        return;
    }
    if (CurrentLine() <= 3) return;
    insertAndAsk("TEMPO 60");
}

void Editor::insertAndAsk(const std::string& text) {
    RCDTxt = text;
    AdvanceStep = 0;
    InsertLineCommand();
    AdvanceStep = 1;
    labelDoubleClick(CurrentLine());
}

void Editor::labelDoubleClick(int line) {
    if (line < 1 || line > LastLine()) return;
    if (RCDTxt.compare(0, 5, "TEMPO") == 0)
        tempoDialog(line);
    else if (RCDTxt.compare(0, 5, "RHYTM") == 0 || RCDTxt.compare(0, 5, "RHITM") == 0 ||
             RCDTxt.compare(0, 6, "RHYTHM") == 0)
        rhythmDialog(line);
}

void Editor::tempoDialog(int line) {
    const std::string current(core::Trim(core::DirectivePayload(sheet()[line], 4)));
    const auto answer =
        m_services.host ? m_services.host->inputBox("Tempo", current) : std::nullopt;
    const double v = answer ? core::Val(*answer) : 0;
    const double size = std::abs(v);
    if (size >= 20 && size <= 320) {
        RCDTxt = "TEMPO" + NumberText(v);
        if (line < 4) m_doc.InitialTempo = size;
        CommitLineCommand();
    } else if ((v == -2 || v == -5) && line == 2) {
        // The head tempo's hidden forms are stored by the closing step.
        RCDTxt = "TEMPO" + NumberText(v);
        labels[static_cast<std::size_t>(CurrentLine())].caption = NumberText(v);
        KeyOutcome = Outcome::StoreAnswer;
    } else if (line > 3) {
        DeleteLinesCommand();
    }
}

void Editor::rhythmDialog(int line) {
    const std::string current(core::Trim(core::DirectivePayload(sheet()[line], 6)));
    const auto answer =
        m_services.host ? m_services.host->inputBox("RHYTM", current) : std::nullopt;
    if (answer && !answer->empty()) {
        RCDTxt = "RHYTM" + *answer;
        CommitLineCommand();
    } else if (line > 3) {
        DeleteLinesCommand();
    }
}

// Shift+T raises column 2 of the selected lines (octaves 2..4 only), Ctrl+T lowers it.
void Editor::keyTranspose(int) {
    if (SelStart < 5) SelStart = 5;
    if (SelEnd <= 0) return;
    const bool up = m_shift == Shift::Shift;
    for (int i = SelStart; i <= std::min(SelEnd, LastLine()); ++i) {
        core::ScoreLine& line = sheet()[i];
        const int o = core::ReadNote(line).octave;
        const int moved = up && o > 1 && o < 5 ? o + 1 : !up && o > 1 ? o - 1 : o;
        if (moved == o) continue;
        line.set(core::NoteField::PitchOctave, std::to_string(moved));
        m_doc.DirtyFlag = true;
    }
}

} // namespace tahrir::edit
