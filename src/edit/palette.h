#pragma once
// The palette as a second keyboard: each entry is a key code and a shift state.

#include <string_view>

namespace tahrir::edit {

// What a click on a palette entry sends to the key press.
struct PaletteEntry {
    int key;             // virtual key, 0 for the entries with their own action (58..60)
    int shift;           // the fixed shift state
    bool clickShift;     // the lit picture passes the click's shift state instead
    bool idleClickShift; // the idle picture passes the click's shift state instead
};

inline constexpr int PaletteEntries = 73;

const PaletteEntry& PaletteEntryAt(int index);

// The hint shown for an entry: the lit picture shows hint i, the idle one i + 10 for
// entries 58 to 60 and 68 to 70.
int PaletteHintIndex(int index, bool lit);

// The mark word of a mark key (Ctrl with F2..F12 but F7, digits 0 and 5..9, grave,
// equals; plain V and C) and its palette entry; empty when the key writes no plain mark.
struct MarkKey {
    int key;
    int shift;
    std::string_view word;
    int entry;
};
const MarkKey* FindMarkKey(int key, int shift);

// The directive line of a plain F key and its palette entry.
struct DirectiveKey {
    int key;
    std::string_view line;
    int entry;
};
const DirectiveKey* FindDirectiveKey(int key);

} // namespace tahrir::edit
