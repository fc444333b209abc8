#include "edit/line_state.h"

#include <string>

#include "core/line_view.h"
#include "edit/palette.h"

namespace tahrir::edit {

namespace {

bool AnyOf(const std::array<std::string_view, 4>& words, auto&& matches) {
    for (std::string_view w : words)
        if (!w.empty() && matches(w)) return true;
    return false;
}

// Whether entry `e` holds for `line`. Any line is read as a note line here: a directive
// whose columns 8 and 9 read "0 " lights the finger entry, as it always has.
bool Holds(const PaletteEntry& e, const core::ScoreLine& line, const core::NoteView& note) {
    switch (e.lighting) {
    case Lighting::Starts:
        return AnyOf(e.words, [&](std::string_view w) { return line.startsWith(w); });
    case Lighting::Field: {
        const std::string value = line.get(e.field);
        return AnyOf(e.words, [&](std::string_view w) { return value == w; });
    }
    case Lighting::KeyChange: {
        const auto change = core::AllChangeOf(line);
        return change && change->digit <= 7;
    }
    case Lighting::Interval:
        return core::IntervalSteps(note.mark.first) > 0 && note.mark.second == e.words[0][0];
    case Lighting::Finger:
        return note.mark.first == e.words[0][0] && note.mark.second != 'T' && note.mark.second != 'M';
    case Lighting::Step:
        return line.get(core::NoteField::PitchStep) == e.words[0];
    case Lighting::Always:
        return true;
    case Lighting::Clipboard:
        return false;
    }
    return false;
}

} // namespace

LitSet ShowLineState(std::string_view text, const LitSet& before) {
    const core::ScoreLine line{std::string(text)};
    const core::NoteView note = core::ReadNote(line);
    LitSet lit;
    for (int i = 0; i < PaletteEntries; ++i) {
        const PaletteEntry& e = PaletteEntryAt(i);
        const auto k = static_cast<std::size_t>(i);
        lit.set(k, e.lighting == Lighting::Clipboard ? before.test(k) : Holds(e, line, note));
    }
    // A key change in mid-score lights its accidental too.
    if (lit.test(Entry::AccidentalLine))
        if (const int accidental = AccidentalEntry(core::AllChangeOf(line)->letter); accidental >= 0)
            lit.set(static_cast<std::size_t>(accidental));
    return lit;
}

int SyllableStep(std::string_view text) {
    const core::NoteView note = core::ReadNote(core::ScoreLine{std::string(text)});
    return note.step >= 1 && note.step <= 7 ? note.step : 0;
}

} // namespace tahrir::edit
