#pragma once
// The letters and words a note line stores, as data: accidentals, marks and chord symbols.

#include <optional>
#include <span>
#include <string_view>

namespace tahrir::core {

enum class Accidental { None, Sharp, Flat, Sori, Koron, Natural, Unknown };

// One accidental: its `AccidentalCode` letter, the music-font character that draws it,
// the semitones it adds to the key, its pitch-bend step (3 plain), the quarter tones it
// moves the step by, and its name (the MusicXML accidental word).
struct AccidentalRow {
    Accidental accidental;
    char letter;
    const char* glyph;
    int semitones;
    int bendStep;
    int quarterTones;
    const char* name;
};

std::span<const AccidentalRow> AccidentalTable();
// The row of a letter; blank gives None, a letter outside the table Unknown (no row).
Accidental AccidentalOf(char letter);
const AccidentalRow* AccidentalRowOf(Accidental accidental);
inline const AccidentalRow* AccidentalRowOf(char letter) {
    return AccidentalRowOf(AccidentalOf(letter));
}

// What a `MarkCode` word means.
enum class Mark {
    None,
    Mordent,          // "M "
    IntervalMordent,  // "1M" .. "KM"
    IntervalTogether, // "1T" .. "KT"
    OctaveUp,         // "8U"
    OctaveDown,       // "8D"
    Trill,            // "TR"
    TrillFlat,        // "TB"
    Riz,              // "T "
    Dorrab,           // "D "
    Tekyeh,           // "O "
    Staccato,         // ". " or the older "ST"
    Accent,           // "AC"
    Tuplet,           // "L3", "L5", "L7", "L9"
    Tie,              // "TI"
    Thumb,            // "+ "
    Finger,           // "0 " .. "5 ", and "1Z", "1B" .. "4Z", "4B"
    PlectrumLeft,     // "7 "
    PlectrumRight,    // "8 "
    Other,
};

// A mark word read: its meaning and the number it carries (interval steps 1..20, tuplet
// notes 3..9, finger 0..5), with the two stored characters.
struct MarkWord {
    Mark mark = Mark::None;
    int number = 0;
    char first = ' ';
    char second = ' ';
};

MarkWord ReadMark(char first, char second);
// The fixed words of the palette, for writing: "TR", "AC", "8U" ...; empty for marks
// that carry a number.
std::string_view MarkCodeOf(Mark mark);
// "1".."9" and "A".."K" count 1..20 scale steps; 0 for any other character.
int IntervalSteps(char c);
char IntervalCharOf(int steps);

// Chord symbols: the root codes "A".."L" name the sharp spelling, "N".."Y" the flat one;
// kind codes from "A" name M, m, aug, dim, ... dim7.
inline constexpr char FlatRootBase = 'N';
std::optional<std::string_view> ChordRootName(char code);
std::optional<std::string_view> ChordKindName(char code);
std::span<const std::string_view> ChordRootNames(bool flat);
std::span<const std::string_view> ChordKindNames();

} // namespace tahrir::core
