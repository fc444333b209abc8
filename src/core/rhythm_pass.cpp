#include "core/rhythm_pass.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "core/beam_patterns.h"
#include "core/line_kind.h"
#include "core/text_input.h"

namespace tahrir::core {

namespace {

constexpr int kMaxGroup = 5;      // a note and the four after it
constexpr int kPayloadColumn = 6; // rhythm payload and line 3's measure
constexpr int kFirstMusicLine = 4;

// Rhythm changes seen by the pass; "RHITHM" lines leave the measure as it is.
constexpr std::string_view kRhythmTokens[] = {"RHYTHM", "RHYTM", "RHITM"};

// The number of a field by the one number rule, held within int range.
int FieldNumber(std::string_view text) {
    return static_cast<int>(std::clamp(Val(text), -1e6, 1e6));
}

// "L3", "L5", "L7", "L9" in columns 8..9: the number of notes of the tuplet.
int TupletSize(const ScoreLine& line) {
    const char count = line.at(9);
    const bool tuplet =
        line.at(8) == 'L' && (count == '3' || count == '5' || count == '7' || count == '9');
    return tuplet ? count - '0' : 0;
}

bool IsRhythmChange(const ScoreLine& line) {
    return line.at(1) == 'R' &&
           std::any_of(std::begin(kRhythmTokens), std::end(kRhythmTokens),
                       [&](std::string_view token) { return line.startsWith(token); });
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// A rhythm line's measure is read from column 6 on, whatever the token's length.
std::string_view PayloadOf(const ScoreLine& line) {
    const std::string_view text(line.text());
    return text.size() < kPayloadColumn ? std::string_view() : text.substr(kPayloadColumn - 1);
}

// What the pass needs of a line whose step is a digit and whose duration reads.
struct NoteRead {
    bool isNote = false;
    bool pitched = false; // step 1..9; a rest or barline has step 0
    int duration = 0;     // 32nds; -1 for a grace note or barline
    int tuplet = 0;       // 3, 5, 7, 9 for a tuplet mark, else 0
};

NoteRead ReadNote(const ScoreLine& line) {
    const char step = line.at(1);
    if (!IsDigit(step)) return {};
    const char columns[3] = {line.at(3), line.at(4), line.at(5)};
    const std::string_view word(columns, 3);
    int duration = -1;
    if (word != " -1") {
        const auto ticks = DurationTicks(word);
        if (!ticks) return {};
        duration = *ticks;
    }
    return {true, step != '0', duration, TupletSize(line)};
}

// A line that may follow another inside a beam group.
bool ContinuesGroup(const NoteRead& note) {
    return note.isNote && note.pitched && note.duration >= 0 && note.tuplet == 0;
}

// The closing code the table gives a whole figure, or the plain close.
char ClosingOf(std::span<const int> figure) {
    for (const BeamPattern& row : kBeamPatterns) {
        if (row.groupSize() != static_cast<int>(figure.size()) ||
            row.length() != row.groupSize())
            continue;
        if (std::equal(figure.begin(), figure.end(), row.durations.begin())) return row.closing;
    }
    return 'c';
}

bool IsShort(int duration) {
    return BeamLevel(duration) > 0;
}

bool IsLong(int duration) {
    constexpr int kLong[] = {8, 12, 16, 20, 24, 28, 32, 48};
    return std::find(std::begin(kLong), std::end(kLong), duration) != std::end(kLong);
}

// One forward walk over the sheet, holding the measure and the place in it.
class BeamWalk {
public:
    explicit BeamWalk(ScoreSheet& sheet)
        : m_sheet(sheet), m_last(std::clamp(sheet.LastLine, 0, MaxLines)) {}

    void run() {
        clear();
        m_measure = ReadMeasure(PayloadOf(m_sheet[3]));
        for (int line = kFirstMusicLine; line <= m_last;)
            line = step(line);
    }

private:
    // Stored codes are discarded (line 1's column 7 is the key signature's Si), and each
    // line is read once for the look-ahead.
    void clear() {
        m_notes.assign(static_cast<std::size_t>(m_last) + 1, NoteRead{});
        for (int i = 2; i <= m_last; ++i) {
            ScoreLine& line = m_sheet[i];
            if (!IsDigit(line.at(1))) continue;
            if (line.size() >= 7) line.setField(7, " ");
            m_notes[static_cast<std::size_t>(i)] = ReadNote(line);
        }
    }

    const NoteRead& noteAt(int index) const { return m_notes[static_cast<std::size_t>(index)]; }

    // Handles the line at `index` and returns the next line to look at.
    int step(int index) {
        const ScoreLine& line = m_sheet[index];
        if (IsRhythmChange(line)) {
            m_measure = ReadMeasure(PayloadOf(line));
            BeatPosition = 0; // the new measure starts here
            return index + 1;
        }
        const NoteRead& note = noteAt(index);
        if (!note.isNote) return index + 1;
        if (note.duration < 0) {
            if (!note.pitched) BeatPosition = 0; // a barline; a grace note takes no time
            return index + 1;
        }
        if (note.tuplet > 0) return walkTuplet(index, note.tuplet);
        if (note.pitched && IsShort(note.duration)) return beamFrom(index, note.duration);
        if (!note.pitched || IsLong(note.duration)) advance(note.duration);
        return index + 1;
    }

    // Matches the note at `index` and up to four followers against the pattern table.
    int beamFrom(int index, int first) {
        std::array<int, kMaxGroup> durations{first};
        int count = 1;
        while (count < kMaxGroup && index + count <= m_last) {
            const NoteRead& next = noteAt(index + count);
            if (!ContinuesGroup(next)) break;
            durations[static_cast<std::size_t>(count++)] = next.duration;
        }
        const BeamMatch match = MatchBeamPattern(
            std::span<const int>(durations.data(), static_cast<std::size_t>(count)), room());
        if (match.size > 1) writeGroup(index, match.size, match.closing);
        int total = 0;
        for (int i = 0; i < match.size; ++i)
            total += durations[static_cast<std::size_t>(i)];
        advance(total);
        return index + match.size;
    }

    // A tuplet is walked as one unit: its marked note and the notes after it, up to its
    // size. The marked note takes no measure time, which fits three notes into two. The
    // tuplet is beamed on its own when all its notes share one beam level and it fits the
    // beat; no other group reaches into it.
    int walkTuplet(int index, int size) {
        const NoteRead& head = noteAt(index);
        int count = 1;
        int time = 0;
        bool beamable = head.pitched && IsShort(head.duration);
        while (count < size && index + count <= m_last) {
            const NoteRead& next = noteAt(index + count);
            if (!next.isNote || next.duration < 0 || next.tuplet > 0) break;
            beamable =
                beamable && next.pitched && BeamLevel(next.duration) == BeamLevel(head.duration);
            time += next.duration;
            ++count;
        }
        if (beamable && count > 1 && time <= room()) writeGroup(index, count, 'c');
        advance(time);
        return index + count;
    }

    void writeGroup(int first, int size, char closing) {
        for (int i = 0; i < size - 1; ++i)
            m_sheet[first + i].setField(7, "C");
        m_sheet[first + size - 1].setField(7, std::string_view(&closing, 1));
    }

    // 32nds left before the end of the beat, and never beyond the end of the measure.
    int room() const {
        const int beat = m_measure.beatTicks();
        const int measure = static_cast<int>(m_measure.MeasureTicks);
        return std::max(0, std::min(beat - BeatPosition % beat, measure - BeatPosition));
    }

    void advance(int ticks) {
        BeatPosition += ticks;
        if (static_cast<float>(BeatPosition) >= m_measure.MeasureTicks) BeatPosition = 0;
    }

    ScoreSheet& m_sheet;
    int m_last;
    std::vector<NoteRead> m_notes; // by line index
    Measure m_measure;
    int BeatPosition = 0; // 32nds since the last barline
};

} // namespace

Measure ReadMeasure(std::string_view payload) {
    Measure measure;
    measure.numerator = FieldNumber(payload.substr(0, 3));
    const auto slash = payload.find('/');
    measure.denominator =
        slash == std::string_view::npos ? 0 : FieldNumber(payload.substr(slash + 1, 2));
    measure.CompoundMeasure = (measure.numerator >= 6 && measure.denominator == 8) ||
                              (measure.numerator >= 12 && measure.denominator == 16);
    if (measure.denominator == 0) return measure;
    // Integer part of numerator / denominator x 32, in single precision.
    const float ticks =
        static_cast<float>(measure.numerator) / static_cast<float>(measure.denominator) * 32.0f;
    const float whole = static_cast<float>(static_cast<long>(ticks));
    // No length at all (or a negative one from a damaged line) turns the bar check off.
    measure.MeasureTicks = whole > 0.0f ? whole : kNoBarCheck;
    return measure;
}

BeamMatch MatchBeamPattern(std::span<const int> durations, int room) {
    // Two to four short notes that fill the rest of the beat exactly are one group.
    int filled = 0;
    for (std::size_t n = 0; n < durations.size() && n < kMaxBeamGroup; ++n) {
        if (BeamLevel(durations[n]) == 0) break;
        filled += durations[n];
        if (filled > room) break;
        if (filled == room && n > 0) return {static_cast<int>(n) + 1, ClosingOf(durations.first(n + 1))};
    }
    if (durations.empty() || durations[0] < 1 ||
        durations[0] >= static_cast<int>(kPatternBlocks.size()))
        return {};
    const PatternRange range = kPatternBlocks[static_cast<std::size_t>(durations[0])];
    for (int i = range.begin; i < range.end; ++i) {
        const BeamPattern& row = kBeamPatterns[i];
        std::size_t n = 1;
        while (n < row.durations.size() && row.durations[n] != 0 && n < durations.size() &&
               row.durations[n] == durations[n])
            ++n;
        const bool matches = n == row.durations.size() || row.durations[n] == 0;
        if (!matches || row.sum() > room) continue;
        return {row.groupSize(), row.groupSize() > 1 ? row.closing : ' '};
    }
    return {};
}

void RhythmPass(ScoreSheet& sheet) {
    BeamWalk(sheet).run();
}

} // namespace tahrir::core
