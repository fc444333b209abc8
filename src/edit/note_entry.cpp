// Keys that change the pen: pitch, rest, duration, staff steps and accidentals.

#include <string>

#include "core/line_view.h"
#include "edit/editor.h"
#include "edit/key_codes.h"
#include "edit/pen_caption.h"

namespace tahrir::edit {

namespace {

// One row of the staff-step table: when step and octave lie in the ranges, the new step
// and octave are either set or moved by the given amount.
struct StepRow {
    int key;
    int stepMin, stepMax, octaveMin, octaveMax;
    bool setStep;
    int step;
    bool setOctave;
    int octave;
    double dy; // move of the pen in staff units
};

// Up from step 7 of octave 0 jumps to octave 4: kept as the program has always done.
constexpr StepRow kStepRows[] = {
    {Key::Up, 1, 6, 1, 5, false, 1, false, 0, -0.5},
    {Key::Up, 7, 7, 1, 5, true, 1, false, 1, -0.5},
    {Key::Up, 7, 7, 0, 0, true, 1, true, 4, -0.5},
    {Key::Down, 2, 7, 1, 9, false, -1, false, 0, 0.5},
    {Key::Down, 1, 1, 2, 9, true, 7, false, -1, 0.5},
    {Key::PageUp, 1, 7, 0, 5, false, 0, false, 1, -3.5},
    {Key::PageDown, 1, 7, 1, 9, false, 0, false, -1, 3.5},
};

constexpr std::string_view kDurationByDigit[] = {" 32", "  1", "  2", "  3", "  4",
                                                 "  6", "  8", " 12", " 16", " 24"};

} // namespace

void Editor::keyPitch(int key) {
    core::ScoreLine& pen = PenLine();
    const int digit = key - Key::D0;
    const core::NoteView note = core::ReadNote(pen);
    if (note.octave < 1) pen.set(core::NoteField::PitchOctave, "3");
    const int old = note.step;
    if (old > 0) {
        // The octave stays: 7 after 1 climbs six steps.
        LineY[0] -= (digit - old) * 0.5;
        pen.set(core::NoteField::PitchStep, std::to_string(digit));
        return;
    }
    LineY[0] = LineY[0] - 4 - digit * 0.5;
    pen.set(core::NoteField::PitchStep, std::to_string(digit));
    labels[0].caption = NoteCaption(pen.get(core::NoteField::DurationField));
}

void Editor::keyRest(int) {
    core::ScoreLine& pen = PenLine();
    if (core::ReadNote(pen).step > 0) {
        LineY[0] = LineY[static_cast<std::size_t>(CurrentLine())] - 7.5;
    }
    pen.set(core::NoteField::PitchStep, "0");
    pen.set(core::NoteField::PitchOctave, "3");
    labels[0].caption = RestCaption(pen.get(core::NoteField::DurationField));
}

void Editor::keyDuration(int key) {
    core::ScoreLine& pen = PenLine();
    const std::string_view word = key == Key::Grave ? " -1" : kDurationByDigit[key - Key::D0];
    pen.set(core::NoteField::DurationField, word);
    labels[0].caption = NoteCaption(word);
    const core::NoteView note = core::ReadNote(pen);
    if (note.pitched && note.step == 0) labels[0].caption = RestCaption(word);
}

void Editor::keyStep(int key) {
    core::ScoreLine& pen = PenLine();
    const core::NoteView note = core::ReadNote(pen);
    const int step = note.step, octave = note.octave;
    for (const StepRow& row : kStepRows) {
        if (row.key != key || step < row.stepMin || step > row.stepMax || octave < row.octaveMin ||
            octave > row.octaveMax)
            continue;
        const int newStep = row.setStep ? row.step : step + row.step;
        const int newOctave = row.setOctave ? row.octave : octave + row.octave;
        pen.set(core::NoteField::PitchStep, std::to_string(newStep));
        pen.set(core::NoteField::PitchOctave, std::to_string(newOctave));
        LineY[0] += row.dy;
        return;
    }
}

// D, B, S, K, N toggle by the palette entry's lit state, not by the pen.
void Editor::keyAccidental(int key) {
    if (!penPitched()) return;
    core::ScoreLine& pen = PenLine();
    const char letter = static_cast<char>(key);
    std::string& caption = labels[0].caption;
    const bool blank = core::ReadNote(pen).accidentalLetter == ' ';
    if (!lit.test(static_cast<std::size_t>(AccidentalEntry(letter)))) {
        const std::string glyph = AccidentalGlyph(letter);
        if (blank)
            caption = glyph + caption;
        else if (caption.size() > 1)
            caption = glyph + caption.substr(1, 2);
        pen.set(core::NoteField::AccidentalCode, std::string(1, letter));
        return;
    }
    if (!blank && caption.size() > 1)
        caption.erase(0, 1);
    else if (!blank)
        caption = " " + caption;
    pen.set(core::NoteField::AccidentalCode, " ");
}

void Editor::insertAccidentalLine(char letter) {
    std::string line = "ALL";
    line += PenLine().get(core::NoteField::PitchStep);
    line += letter;
    line.resize(8, ' ');
    PenLine() = core::ScoreLine(line);
    AdvanceStep = 0;
    RCDTxt = line;
    InsertLineCommand();
}

// Shift with D, B, S, K, N: the accidental from this measure on.
void Editor::keyMeasureAccidental(int key) {
    if (!penPitched()) return;
    insertAccidentalLine(static_cast<char>(key));
}

// A: the same from the pen's own accidental, or takes the "ALL" line away.
void Editor::keyAccidentalLine(int) {
    if (lit.test(Entry::AccidentalLine)) {
        DeleteLinesCommand();
        return;
    }
    if (!penPitched()) return;
    const char code = core::ReadNote(PenLine()).accidentalLetter;
    insertAccidentalLine(code == ' ' ? 'N' : code);
}

// Ctrl with D, B, S, K writes the key signature of the pen's step; Ctrl+N blanks it.
void Editor::keySignature(int key) {
    const int step = core::ReadNote(PenLine()).step;
    if (step < 1 || step > 7) return;
    const char letter = key == Key::Letter('N') ? ' ' : static_cast<char>(key);
    // The header line holds the key letter of step n in column n.
    sheet()[1].setField(step, std::string(1, letter));
    AdvanceStep = 0;
    RCDTxt = PenLine().text();
    CommitLineCommand();
}

} // namespace tahrir::edit
