#pragma once
// What the non-note lines carry: the key and clef of the header line, the "ALL" key
// change, the payload behind a directive token and the text of an L line.

#include <array>
#include <optional>
#include <string>

#include "core/score_line.h"

namespace tahrir::core {

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

// The placement letter of an L line (column 2: " ", "-", "^", "_", "v", "<", ">", "C").
char LinePlacement(const ScoreLine& line);
// The text of an L line: columns 3 on, without trailing blanks.
std::string LineText(const ScoreLine& line);

} // namespace tahrir::core
