#pragma once
// Small readers of line text shared by the drawing routines.

#include <string>
#include <string_view>

namespace tahrir::render {

// The leading number of a text as the line grammar reads it: blanks skipped, an optional
// sign, digits and a decimal part; 0 when there is none.
double Val(std::string_view text);
// The first `n` characters folded to upper case.
std::string Upper(std::string_view text, std::size_t n);
std::string_view Trim(std::string_view text);
// Numerator and denominator of a rhythm word's payload (from column 6).
struct RhythmFields {
    std::string_view numerator, denominator;
};
RhythmFields SplitRhythm(std::string_view line);

} // namespace tahrir::render
