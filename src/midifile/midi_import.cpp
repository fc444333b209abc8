#include "midifile/midi_import.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "core/score_line.h"

namespace tahrir::midifile {
namespace {

// A note line of the import: the fields to the accidental, then five blanks.
constexpr std::size_t ImportLineLength = 11;

// Semitones of the white keys, Do to Si.
constexpr int WhiteKeys[7] = {0, 2, 4, 5, 7, 9, 11};

// Length thresholds in quarters, tested in order, and the 32nds each gives.
struct LengthStep {
    double quarters;
    int duration;
};
constexpr LengthStep LengthSteps[] = {
    {4, 32}, {3, 24}, {2, 16}, {1.5, 12}, {1, 8}, {0.75, 6}, {0.5, 4}, {0.375, 3}, {0.25, 2},
};

// The head lines the import leaves in the sheet, from line 1; the first note overwrites
// line 8 and what follows it.
const char* const SheetHead[9] = {
    "       G  ", "TEMPO", "RHYTM", "LCINS=HUMAN", "LCOCT=0",
    "LCTRP=0",    "LCPED=OFF", "LCTFS=1", "L>Midi In",
};

// The plain head lines of the file after its two quoted fields.
const char* const FileHead[7] = {
    "       G   ", "TEMPO", "RHYTM", "LCINS=1", "LCTRP=0", "LCOCT=0", "LCPED=OFF",
};

void Step(int key, int& step, char& accidental) {
    accidental = ' ';
    step = 0;
    if (key == 0) return;
    const int semitone = key % 12;
    for (int i = 0; i < 7; ++i) {
        if (semitone == WhiteKeys[i]) {
            step = i + 1;
            return;
        }
    }
    // Going up first makes every black key a sharp.
    for (int i = 0; i < 7; ++i) {
        if (semitone == WhiteKeys[i] + 1) {
            step = i + 1;
            accidental = 'D';
            return;
        }
        if (semitone == WhiteKeys[i] - 1) {
            step = i + 1;
            accidental = 'B';
            return;
        }
    }
}

// Keeps the dump for the chooser while the window's list shows it.
class TeeSink : public DumpSink {
public:
    explicit TeeSink(DumpSink& shown) : m_shown(shown) {}
    void addLine(std::string_view line) override {
        lines.emplace_back(line);
        m_shown.addLine(line);
    }
    bool cancelled() override { return m_shown.cancelled(); }
    std::vector<std::string> lines;

private:
    DumpSink& m_shown;
};

void PutLine(std::ofstream& out, const std::string& text) { out << text << "\r\n"; }

// The head of the file (two quoted fields, seven plain lines) and of the sheet (lines 1..9).
void WriteHead(std::ofstream& out, core::ScoreSheet& sheet, const MidiFileInfo& info,
               const std::string& name) {
    const std::string tempo = std::to_string(info.MidiTempoText);
    PutLine(out, std::string("\"") + ImportMagicField + "\"");
    PutLine(out, "\"" + name + "\"");
    for (int i = 0; i < 7; ++i) {
        const std::string tail = i == 1 ? tempo : i == 2 ? info.MidiRhythmText : "";
        PutLine(out, FileHead[i] + tail);
    }
    for (int i = 0; i < 9; ++i) {
        const std::string tail = i == 1 ? tempo : i == 2 ? info.MidiRhythmText : "";
        sheet.setLine(i + 1, SheetHead[i] + tail);
    }
}

} // namespace

int DurationFor(std::int64_t ticks, int quarter) {
    for (const LengthStep& s : LengthSteps)
        if (static_cast<double>(ticks) >= s.quarters * quarter) return s.duration;
    return 1;
}

std::string ImportLine(int key, std::int64_t ticks, int quarter, int octaveShift) {
    int step = 0;
    char accidental = ' ';
    Step(key, step, accidental);
    // The octave has a single column: beyond 9 the duration would leave columns 3..5.
    const int octave = std::clamp(std::max(0, key / 12 - 2) + octaveShift, 0, 9);
    std::string duration = std::to_string(DurationFor(ticks, quarter));
    duration.insert(0, 3 - duration.size(), ' ');
    core::ScoreLine line;
    line.set(core::NoteField::PitchStep, std::to_string(step));
    line.set(core::NoteField::PitchOctave, std::to_string(octave));
    line.set(core::NoteField::DurationField, duration);
    line.set(core::NoteField::AccidentalCode, std::string(1, accidental));
    line.padTo(ImportLineLength);
    return line.text();
}

int AnswerNumber(const std::string& answer) {
    const char* text = answer.c_str();
    while (*text == ' ' || *text == '\t') ++text;
    char* end = nullptr;
    const long value = std::strtol(text, &end, 10);
    if (end == text) return 0;
    return static_cast<int>(std::clamp<long>(value, -1000, 1000));
}

ImportResult ImportTrack(const MidiFileInfo& info, int track, int octaveShift,
                         core::Document& doc, const std::filesystem::path& scoreFile) {
    ImportResult result;
    if (track < 1 || track > MaxImportTrack) {
        result.message = "Track " + std::to_string(track) + " cannot be imported: tracks 1 to " +
                         std::to_string(MaxImportTrack) + " can";
        return result;
    }
    if (static_cast<std::size_t>(track) > info.MidiTracks.size()) {
        result.message = "The file has no track " + std::to_string(track);
        return result;
    }
    const std::string& name = info.trackNames[track - 1];
    const std::vector<MidiNote>& notes = info.MidiTracks[track - 1];
    std::ofstream out(scoreFile, std::ios::binary | std::ios::trunc);
    if (!out) {
        result.message = "Cannot write " + scoreFile.string();
        return result;
    }
    doc.Description = name + "\r";
    WriteHead(out, doc.Sheet, info, name);
    const int quarter = info.quarterTicks();
    for (const MidiNote& note : notes) {
        const std::string line = ImportLine(note.key, note.length, quarter, octaveShift);
        const int index = 8 + result.notes;
        if (index > core::MaxLines) {
            result.message = "Track " + std::to_string(track) + " has " +
                             std::to_string(notes.size()) + " notes; a score holds only " +
                             std::to_string(core::MaxLines - 7) + " of them";
            return result;
        }
        doc.Sheet.setLine(index, line);
        PutLine(out, line);
        ++result.notes;
    }
    // The importer's own count: the last four notes lie beyond LastLine.
    doc.Sheet.LastLine = result.notes + 3;
    if (!out.flush()) {
        result.message = "Cannot write " + scoreFile.string();
        return result;
    }
    result.status = ImportStatus::Imported;
    return result;
}

ImportResult ImportMidiFile(const std::filesystem::path& midiFile,
                            const std::filesystem::path& scoreFile, ImportChooser& chooser,
                            DumpSink& dump, core::Document& doc) {
    TeeSink list(dump);
    const MidiFileInfo info = ReadMidiFile(midiFile, list);
    if (info.outcome == ReadOutcome::Cancelled) return {ImportStatus::Cancelled, {}, 0};
    if (info.outcome == ReadOutcome::Unreadable)
        return {ImportStatus::Failed, "Cannot read " + midiFile.string(), 0};
    // The reader stopped before the notes: its error is the last line of the dump.
    if (info.outcome == ReadOutcome::NotMidi || info.outcome == ReadOutcome::MissingTrack)
        return {ImportStatus::Failed, list.lines.empty() ? "" : list.lines.back().substr(8), 0};
    const std::optional<int> track = chooser.chooseTrack(info, list.lines);
    if (!track) return {ImportStatus::Cancelled, {}, 0};
    const std::string name = *track >= 1 && static_cast<std::size_t>(*track) <= info.trackNames.size()
                                 ? info.trackNames[*track - 1]
                                 : std::string();
    const int shift = AnswerNumber(chooser.askOctave(OctavePrompt, name));
    return ImportTrack(info, *track, shift, doc, scoreFile);
}

} // namespace tahrir::midifile
