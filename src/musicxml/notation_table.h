#pragma once
// What the score's codes become in MusicXML: note types, marks, key orders and chord
// kinds. The codes themselves are read through core's line view.

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/notation_tables.h"

namespace tahrir::musicxml {

// The written type of a duration in 32nds, with its dots; nullopt for no single type.
struct NoteType {
    int ticks;
    std::string_view type;
    int dots;
};
std::optional<NoteType> NoteTypeOf(int ticks);

// Where a mark goes in <notations>, or how else the export handles it.
enum class MarkGroup { None, Ornament, Technical, Articulation, Tuplet, Tie, Octave, Dual };
MarkGroup MarkGroupOf(core::Mark mark);
// The XML a mark becomes inside its group (a finger carries its number); empty for the
// marks that have no element of their own.
std::string MarkElement(const core::MarkWord& word);

// Steps 1..7 (Do..Si) in the order sharps and flats enter a standard key signature.
std::span<const int> SharpOrder();
std::span<const int> FlatOrder();

// A chord root as MusicXML writes it: step letter and alter; nullopt for a code that
// names none.
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
