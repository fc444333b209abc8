#include "transcribe/note_insertion.h"

#include <algorithm>
#include <cmath>

#include "core/load_file.h"
#include "core/notation_tables.h"
#include "core/score_line.h"

namespace tahrir::transcribe {

namespace {

// The lengths a part may take for one smallest note: the largest listed length not above
// T; below the smallest listed one, T from `promoteFrom` gives `promoteTo`, less gives 0.
struct SnapRow {
    int minDuration;
    std::vector<int> lengths;
    int promoteFrom;
    int promoteTo;
};

const SnapRow kSnapRows[] = {
    {1, {32, 24, 16, 12, 8, 6, 4, 3, 2, 1}, 1, 1},
    {2, {32, 24, 16, 12, 8, 6, 4, 3}, 1, 2},
    {4, {32, 24, 16, 12, 8}, 2, 4},
    {8, {32, 24, 16}, 4, 8},
};

// For each quarter tone q of the octave (0 = Do): the exact step and accidental, the
// first box with its step and the second box with its step (box -1: none).
struct PitchRow {
    int exactStep;
    core::Accidental exactAccidental;
    int firstBox, firstStep;
    int secondBox, secondStep;
};

constexpr auto N = core::Accidental::Natural, S = core::Accidental::Sori,
               D = core::Accidental::Sharp, K = core::Accidental::Koron;
const PitchRow kPitchRows[24] = {
    {1, N, 2, 1, 34, 7},  {1, S, 3, 1, -1, 0},  {1, D, 4, 1, 5, 2},   {2, K, 6, 2, -1, 0},
    {2, N, 7, 2, -1, 0},  {2, S, 8, 2, -1, 0},  {2, D, 9, 2, 10, 3},  {3, K, 11, 3, -1, 0},
    {3, N, 12, 3, 15, 4}, {3, S, 13, 3, 16, 4}, {4, N, 14, 3, 17, 4}, {4, S, 18, 4, -1, 0},
    {4, D, 19, 4, 20, 5}, {5, K, 21, 5, -1, 0}, {5, N, 22, 5, -1, 0}, {5, S, 23, 5, -1, 0},
    {5, D, 24, 5, 25, 6}, {6, K, 26, 6, -1, 0}, {6, N, 27, 6, -1, 0}, {6, S, 28, 6, -1, 0},
    {6, D, 29, 6, 30, 7}, {7, K, 31, 7, -1, 0}, {7, N, 32, 7, 0, 1},  {7, S, 33, 7, 1, 1},
};

const SnapRow& RowFor(int minDuration) {
    for (const SnapRow& row : kSnapRows)
        if (row.minDuration == minDuration) return row;
    return kSnapRows[0];
}

// The insertion's running state: the carried error in samples and where the last element
// ended.
class Inserter {
public:
    Inserter(core::Document& doc, const InsertOptions& o, const core::DastgahBoxes& boxes)
        : m_doc(doc), m_o(o), m_boxes(boxes),
          m_samplesPerTick(o.sampleRate * 60 / (8 * o.tempo)) {}

    bool element(double from, double to, const TimedNote* note);
    bool insertLine(const std::string& text);

    double LastInsertEnd = 0;
    double InsertCarry = 0;
    InsertResult result;

private:
    std::string text(const TimedNote* note, int length, bool tied) const;

    core::Document& m_doc;
    const InsertOptions& m_o;
    const core::DastgahBoxes& m_boxes;
    double m_samplesPerTick;
};

// T snapped to an allowed length: 32 for 32 or more, else the largest listed length not
// above it, else the promoted length or 0.
int SnapLength(int t, int minDuration) {
    if (t >= 32) return 32;
    const SnapRow& row = RowFor(minDuration);
    for (int l : row.lengths)
        if (l <= t) return l;
    return t >= row.promoteFrom ? row.promoteTo : 0;
}

std::string Inserter::text(const TimedNote* note, int length, bool tied) const {
    core::ScoreLine line("0");
    line.set(core::NoteField::PitchOctave, "0");
    const std::string digits = std::to_string(length);
    line.set(core::NoteField::DurationField,
             std::string(3 - std::min<std::size_t>(3, digits.size()), ' ') + digits);
    if (tied) line.set(core::NoteField::MarkCode, core::MarkCodeOf(core::Mark::Tie));
    line.padTo(core::MinLoadedLength);
    if (note == nullptr || note->rest) return line.text();
    const double n = std::isfinite(note->note) ? std::clamp(note->note, 0.0, 255.0) : 0;
    const int q = static_cast<int>(std::floor(2 * n)) % 24;
    const PitchRow& row = kPitchRows[q < 0 ? q + 24 : q];
    const int octave = static_cast<int>(std::floor((std::floor(n) - 24) / 12)) + m_o.OctIns - 2;
    int step = 0;
    core::Accidental accidental = core::Accidental::None;
    if (m_o.Exact) {
        step = row.exactStep;
        accidental = row.exactAccidental;
    } else if (m_boxes[static_cast<std::size_t>(row.firstBox)]) {
        step = row.firstStep;
    } else if (row.secondBox >= 0 && m_boxes[static_cast<std::size_t>(row.secondBox)]) {
        step = row.secondStep;
    }
    // A pitch outside the dastgah stays a rest of its length.
    if (step == 0) return line.text();
    line.set(core::NoteField::PitchStep, std::to_string(step));
    line.set(core::NoteField::PitchOctave, std::to_string(std::clamp(octave, 0, 9)));
    if (const core::AccidentalRow* a = core::AccidentalRowOf(accidental))
        line.set(core::NoteField::AccidentalCode, std::string(1, a->letter));
    return line.text();
}

bool Inserter::insertLine(const std::string& text) {
    core::ScoreSheet& sheet = m_doc.Sheet;
    if (sheet.LastLine >= core::MaxLines) {
        result.memoryFull = true;
        result.message = MemoryFullMessage;
        return false;
    }
    sheet.insertLine(sheet.CurrentLine, core::Scratch(text));
    sheet.CurrentLine += 1;
    result.linesInserted += 1;
    return true;
}

// One rest (note null) or note from `from` to `to` in samples: its ticks, then its parts.
// A part cut to a listed length goes on as the tied remainder; what the last part loses
// or gains goes into the carry (never at a smallest note of 1, where every T is exact).
bool Inserter::element(double from, double to, const TimedNote* note) {
    // More 32nds than the sheet can hold end at "Memory full!" all the same; times that
    // are no numbers make nothing.
    constexpr double kMostTicks = 32.0 * (core::MaxLines + 1);
    double ticks = 8 * (m_o.tempo / 60) * (InsertCarry + to - from) / m_o.sampleRate;
    if (std::isnan(ticks)) ticks = 0;
    ticks = std::clamp(ticks, -kMostTicks, kMostTicks);
    const int t0 = std::max(0, static_cast<int>(std::floor(0.01 + ticks)));
    int t = t0;
    InsertCarry = (ticks - t0) * m_samplesPerTick;
    while (t > 0) {
        const int length = SnapLength(t, m_o.MinDuration);
        const int rest = t - length;
        if (length == 0 || rest < 0) {
            InsertCarry += std::floor(0.5 + rest * m_samplesPerTick);
            if (length == 0) break;
        }
        // The tie goes only to a part that is written.
        const bool tied = rest > 0 && SnapLength(rest, m_o.MinDuration) > 0;
        if (!insertLine(text(note, length, tied))) return false;
        t = rest;
    }
    return true;
}

} // namespace

InsertResult InsertNotes(core::Document& doc, const std::vector<TimedNote>& notes,
                         const InsertOptions& options) {
    core::ScoreSheet& sheet = doc.Sheet;
    sheet.CurrentLine = std::clamp(sheet.CurrentLine, 4, std::max(4, sheet.LastLine + 1));
    // A sheet shorter than the header gets blank lines up to the cursor.
    while (sheet.LastLine + 1 < sheet.CurrentLine) sheet.insertLine(sheet.LastLine + 1, "");
    const core::DastgahBoxes boxes =
        options.boxes ? *options.boxes
                      : core::BoxesOf(core::SignatureAt(sheet, sheet.CurrentLine));
    InsertOptions o = options;
    if (!(o.tempo > 0) || !std::isfinite(o.tempo)) o.tempo = 60;
    if (!(o.sampleRate > 0) || !std::isfinite(o.sampleRate)) o.sampleRate = 11000;
    Inserter in(doc, o, boxes);
    in.result.firstLine = sheet.CurrentLine;

    if (o.TempoToSheet) {
        const std::string tempo = "TEMPO" + core::NumberText(o.tempo);
        if (sheet.CurrentLine == 4) sheet.setLine(2, core::Scratch(tempo));
        else if (!in.insertLine(tempo)) return in.result;
        doc.CurrentTempo = doc.PlayTempo = o.tempo;
    }
    for (const TimedNote& n : notes) {
        const double start = n.start - o.shift;
        const double end = n.end - o.shift;
        if (start > in.LastInsertEnd && !in.element(in.LastInsertEnd, start, nullptr))
            return in.result;
        if (end > start && !in.element(start, end, &n)) return in.result;
        // Kept as a whole number of samples, rounded half to even.
        in.LastInsertEnd = std::nearbyint(in.InsertCarry + end);
    }
    return in.result;
}

} // namespace tahrir::transcribe
