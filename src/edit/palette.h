#pragma once
// The palette as a second keyboard: one record per entry tells the key it sends, what it
// writes, its picture, its hints and how it shows that its symbol is set on the line.

#include <array>
#include <string_view>

#include "core/score_line.h"

namespace tahrir::edit {

inline constexpr int PaletteEntries = 73;

// Entries the editor names in its commands.
namespace Entry {
inline constexpr int Rest = 0, FirstAccidental = 12, AccidentalLine = 17, Spacer = 18;
inline constexpr int IntervalT = 30, IntervalM = 31, FirstFinger = 49;
inline constexpr int Rhythm = 54, Tempo = 55;
inline constexpr int Replace = 58, Insert = 59, Delete = 60, FirstStep = 61;
inline constexpr int Cut = 68, Copy = 69, Paste = 70;
} // namespace Entry

// The box of the palette an entry is shown in.
enum class PaletteGroup { Durations, Accidentals, Repeats, Ornaments, Tuplets, Fingering, Head, Commands, Clipboard, Undo };
inline constexpr int PaletteGroupCount = 10;

// What a click does beyond sending its key.
enum class PaletteAction {
    Key,       // only the key
    Mark,      // the key writes `word` into the pen's mark field
    Directive, // the key inserts the directive line `word`, or takes a lit one away
    Own,       // no key: the lit picture switches a mode, the idle one runs a line command
};

// How an entry is lit from the line under the cursor.
enum class Lighting {
    Starts,    // the line begins with one of `words`
    Field,     // the note field `field` holds one of `words`
    KeyChange, // an "ALL" line of a step 0..7 (its accidental lights too)
    Interval,  // a mark of 1..20 interval steps of the family `words[0]`
    Finger,    // a mark of the finger `words[0]`, not of an interval family
    Step,      // the pitch step `words[0]`
    Always,    // lit whenever the read-out runs
    Clipboard, // kept as it was: lit by cut and copy, cleared by Esc and paste
};

struct PaletteEntry {
    int key;             // virtual key; 0 for the entries with their own action
    int shift;           // the fixed shift state
    bool clickShift;     // the lit picture passes the click's shift state instead
    bool idleClickShift; // the idle picture passes the click's shift state instead
    PaletteAction action;
    std::string_view word; // the mark word or the directive line
    PaletteGroup group;
    std::u32string_view glyph; // music font code points (SMuFL), empty for a text entry
    std::string_view caption;  // UTF-8 caption when there is no glyph
    Lighting lighting;
    core::NoteField field;
    std::array<std::string_view, 4> words;
    std::string_view hint;     // UTF-8, shown by the lit picture
    std::string_view idleHint; // shown by the idle picture when it differs from `hint`
};

// The entry at `index`; entry 0 for an index outside the palette.
const PaletteEntry& PaletteEntryAt(int index);

// The hint an entry shows in help mode, lit or idle.
std::string_view PaletteHint(int index, bool lit);

// The entry of a mark key (`action` Mark) or of a plain directive F key; -1 when none.
int FindMarkEntry(int key, int shift);
int FindDirectiveEntry(int key);

// The entry lit by the accidental letter D, B, S, K or N in column 6; -1 for others.
int AccidentalEntry(char letter);

} // namespace tahrir::edit
