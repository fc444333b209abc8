#pragma once
// The kinds of score line and the order in which a line is classified.

#include <optional>
#include <string_view>

#include "core/score_line.h"

namespace tahrir::core {

enum class LineKind {
    HeaderLine,
    NoteLine, // a note, a rest or a grace note
    BarLine,
    DirectiveLine,
    SpacerLine,
    TextLine,
    ControlLine,
    Unknown,
};

const char* LineKindName(LineKind kind);

// The duration words a file may hold in columns 3..5, in the reader's order.
inline constexpr std::string_view kDurationWords[] = {" -1", "  1", "  2", "  3", "  4",
                                                       "  6", "  8", " 12", " 16", " 20",
                                                       " 24", " 28", " 32", " 48"};
// The directive tokens the reader keeps (case-sensitive, tested by their own length).
inline constexpr std::string_view kReaderTokens[] = {
    "REP{",  "REP}",  "VOL{1", "VOL{2", "REPB1", "REPB2",  "REPS{", "REPS}",
    "ALL8U", "ALL8D", "ALL8N", "TEMPO", "RHITM", "RHYTM", "RHYTHM", "RHITHM"};
// Clef changes: understood by drawing and playback, dropped by the reader.
inline constexpr std::string_view kClefTokens[] = {"GSIGN", "FSIGN"};

bool IsDurationWord(std::string_view word);
// 32nds of a duration word; nullopt for " -1" and for anything that is not a number.
std::optional<int> DurationTicks(std::string_view word);

// Classifies a line's text by the grammar's order (rest, duration word, "ALL", "L",
// directive token). Line 1 of a sheet is the header whatever it holds: pass its index.
LineKind ClassifyLine(std::string_view text, int index = 0);

// The directive token a line begins with (reader tokens and clef changes), or empty.
std::string_view DirectiveTokenOf(std::string_view text);

// True for "RHYTM", "RHITM", "RHYTHM" and "RHITHM" lines.
bool IsRhythmLine(std::string_view text);
bool IsTempoLine(std::string_view text);

} // namespace tahrir::core
