#pragma once
// The tables that map the score's codes to MusicXML words: note types, mark codes,
// accidental letters, key orders and chord symbols.

#include <optional>
#include <span>
#include <string_view>

namespace tahrir::musicxml {

// The written type of a duration in 32nds, with its dots; nullopt for no single type.
struct NoteType {
    int ticks;
    std::string_view type;
    int dots;
};
std::optional<NoteType> NoteTypeOf(int ticks);

// Where a mark code goes in <notations>.
enum class MarkGroup { None, Ornament, Technical, Articulation, Tuplet, Tie, Octave, Dual };

struct MarkRow {
    std::string_view code; // the two characters of the mark
    MarkGroup group;
    std::string_view element; // the XML the mark becomes inside its group
};
// The row of a mark code ("ST" reads as ". "); the interval forms "1T".."KT" and
// "1M".."KM" match by their second character. nullopt for marks with no export.
std::optional<MarkRow> MarkRowOf(std::string_view mark);

// The interval count of "1T".."KT" and "1M".."KM": "1".."9" then "A" = 10 up to "K".
std::optional<int> IntervalCount(char first);

// The accidental word of a letter ("D" sharp, "B" flat, "S" sori, "K" koron, "N"
// natural); empty for any other.
std::string_view AccidentalWord(char letter);

// Steps 1..7 (Do..Si) in the order sharps and flats enter a standard key signature.
std::span<const int> SharpOrder();
std::span<const int> FlatOrder();

// A chord root: step letter and alter; nullopt for a code that names none.
struct ChordRoot {
    char step;
    int alter;
};
std::optional<ChordRoot> ChordRootOf(char code);
// A chord kind: the MusicXML kind value and the text shown; nullopt for none.
struct ChordKind {
    std::string_view value;
    std::string_view text;
};
std::optional<ChordKind> ChordKindOf(char code);

} // namespace tahrir::musicxml
