#pragma once
// The typed view of a score line: a note line parsed once into its fields, and what the
// header, directive and L-family lines carry. Every module reads lines through here;
// writing a field stays column-exact through ScoreLine::set.

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/notation_tables.h"
#include "core/score_line.h"

namespace tahrir::core {

// The fields of a note line. Any line can be read this way: a line whose column 1 is
// not a digit reads as step 0 and no duration.
struct NoteView {
    bool pitched = false; // column 1 is a digit
    int step = 0;         // 1..7 Do..Si; 0 for a rest or a barline
    int octave = 0;       // column 2 as a number, 0 when it is not one
    // 32nds of the duration word (the number read from columns 3..5); nullopt for " -1".
    std::optional<int> ticks;
    char accidentalLetter = ' ';
    Accidental accidental = Accidental::None;
    char beam = ' ';
    MarkWord mark;
    char chordRoot = ' ';
    char chordKind = ' ';

    bool grace() const { return step > 0 && !ticks; }
    bool rest() const { return pitched && step == 0 && ticks.has_value(); }
    bool bar() const { return pitched && step == 0 && !ticks; }
    // The staff position: octave times 7 plus step.
    int position() const { return octave * 7 + step; }
    // The duration in 32nds, 0 for no time.
    int duration() const { return ticks.value_or(0); }
};

NoteView ReadNote(const ScoreLine& line);

// The key letters of the header line for the steps Do..Si at indices 1..7 (0 unused).
std::array<char, 8> HeaderKeyLetters(const ScoreLine& header);
// The clef letter of the header line, "G" or "F".
char HeaderClef(const ScoreLine& header);

// An "ALL" line: a digit (a scale step 0..7, or 8 for the octave lines) and a letter.
struct AllChange {
    int digit = 0;
    char letter = ' ';
};
std::optional<AllChange> AllChangeOf(const ScoreLine& line);

// The payload of a TEMPO or rhythm line: `length` characters from column 6.
std::string DirectivePayload(const ScoreLine& line, int length);
// The number of a "TEMPO" line (columns 6..9, read by the one number rule: blanks are
// skipped, so "TEMPO 7 2" is 72); nullopt when the line is no tempo line.
std::optional<double> TempoOf(const ScoreLine& line);
// 32nds of a measure from a rhythm payload "n/d" (the text from column 6): n * 32 / d
// rounded down, 0 when either number is not positive (free rhythm).
int MeasureTicksOf(std::string_view payload);
// The same for a whole rhythm line, its payload read from column 6 whatever the spelling.
int MeasureTicksOfLine(const ScoreLine& line);
// The two numbers of a rhythm line's payload, read from column 6 as MeasureTicksOfLine
// reads them; the denominator is 0 when the payload has no "/".
struct MeasureFraction {
    double numerator = 0;
    double denominator = 0;
};
MeasureFraction MeasureFractionOfLine(const ScoreLine& line);

// The placement letter of an L line (column 2: " ", "-", "^", "_", "v", "<", ">", "C").
char LinePlacement(const ScoreLine& line);
// The text of an L line: columns 3 on, without trailing blanks.
std::string LineText(const ScoreLine& line);

// An "LC" line: its keyword folded to upper case ("TFS", "INS", "FIN", ...), the number
// read from column 7 (at most `width` characters) and the text from column 7.
struct ControlView {
    std::string keyword; // columns 3..5, upper case
    std::string text;    // columns 7 on, trailing blanks removed
    bool assigns = false; // column 6 is "=", as in "LCINS=3"
    double number(int width = 4) const;
};
std::optional<ControlView> ControlOf(const ScoreLine& line);

// The number of an "LvT=" speed mark (Val of column 5 on); nullopt for any other line.
std::optional<double> SpeedMarkOf(const ScoreLine& line);
// The end of the piece for playback: "FIN" or "LCFIN", or an L line whose text is "FIN",
// right-trimmed and in any case.
bool IsEndMark(const ScoreLine& line);

} // namespace tahrir::core
