#include "edit/line_state.h"

#include <string>

#include "edit/palette.h"

namespace tahrir::edit {

namespace {

char At(std::string_view line, int column) {
    const auto i = static_cast<std::size_t>(column - 1);
    return i < line.size() ? line[i] : ' ';
}

bool FieldIs(std::string_view line, int column, std::string_view value) {
    for (std::size_t i = 0; i < value.size(); ++i)
        if (At(line, column + static_cast<int>(i)) != value[i]) return false;
    return true;
}

bool IsIntervalDigit(char c) {
    return (c >= '1' && c <= '9') || (c >= 'A' && c <= 'K');
}

// Whether entry `e` holds for `line`.
bool Holds(const PaletteEntry& e, std::string_view line) {
    switch (e.lighting) {
    case Lighting::Field:
        for (std::string_view w : e.words)
            if (!w.empty() && FieldIs(line, e.column, w)) return true;
        return false;
    case Lighting::KeyChange:
        return FieldIs(line, 1, "ALL") && At(line, 4) >= '0' && At(line, 4) <= '7';
    case Lighting::Interval:
        return IsIntervalDigit(At(line, 8)) && At(line, 9) == e.words[0][0];
    case Lighting::Finger:
        return At(line, 8) == e.words[0][0] && At(line, 9) != 'T' && At(line, 9) != 'M';
    case Lighting::Step:
        return At(line, 1) == e.words[0][0];
    case Lighting::Always:
        return true;
    case Lighting::Clipboard:
        return false;
    }
    return false;
}

} // namespace

LitSet ShowLineState(std::string_view line, const LitSet& before) {
    LitSet lit;
    for (int i = 0; i < PaletteEntries; ++i) {
        const PaletteEntry& e = PaletteEntryAt(i);
        const bool on = e.lighting == Lighting::Clipboard ? before.test(static_cast<std::size_t>(i)) : Holds(e, line);
        lit.set(static_cast<std::size_t>(i), on);
    }
    // A key change in mid-score lights its accidental too.
    if (lit.test(Entry::AccidentalLine))
        if (const int accidental = AccidentalEntry(At(line, 5)); accidental >= 0)
            lit.set(static_cast<std::size_t>(accidental));
    return lit;
}

int SyllableStep(std::string_view line) {
    const char c = At(line, 1);
    return c >= '1' && c <= '7' ? c - '0' : 0;
}

} // namespace tahrir::edit
