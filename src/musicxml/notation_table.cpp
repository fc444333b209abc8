#include "musicxml/notation_table.h"

#include <algorithm>
#include <array>

namespace tahrir::musicxml {
namespace {

using core::Mark;

constexpr NoteType kTypes[] = {
    {1, "32nd", 0},    {2, "16th", 0},     {3, "16th", 1},  {4, "eighth", 0}, {6, "eighth", 1},
    {8, "quarter", 0}, {12, "quarter", 1}, {16, "half", 0}, {20, "half", 0},  {24, "half", 1},
    {28, "half", 2},   {32, "whole", 0},   {48, "whole", 1}};

// "#" in an element stands for the number the mark carries.
struct MarkRow {
    Mark mark;
    MarkGroup group;
    std::string_view element;
};
// Riz is a three-stroke tremolo; dorrab and tekyeh have no element of their own.
constexpr MarkRow kMarks[] = {
    {Mark::Trill, MarkGroup::Ornament, "<trill-mark/>"},
    {Mark::TrillFlat, MarkGroup::Ornament, "<trill-mark/><accidental-mark>flat</accidental-mark>"},
    {Mark::Mordent, MarkGroup::Ornament, "<inverted-mordent/>"},
    {Mark::IntervalMordent, MarkGroup::Ornament, "<mordent/>"},
    {Mark::Riz, MarkGroup::Ornament, "<tremolo type=\"single\">3</tremolo>"},
    {Mark::Dorrab, MarkGroup::Ornament,
     "<other-ornament smufl=\"ornamentShake3\">dorrab</other-ornament>"},
    {Mark::Tekyeh, MarkGroup::Ornament, "<other-ornament>tekyeh</other-ornament>"},
    {Mark::Staccato, MarkGroup::Articulation, "<staccato/>"},
    {Mark::Accent, MarkGroup::Articulation, "<accent/>"},
    {Mark::Thumb, MarkGroup::Technical, "<thumb-position/>"},
    {Mark::Finger, MarkGroup::Technical, "<fingering>#</fingering>"},
    {Mark::PlectrumLeft, MarkGroup::Technical, "<up-bow/>"},
    {Mark::PlectrumRight, MarkGroup::Technical, "<down-bow/>"},
    {Mark::Tuplet, MarkGroup::Tuplet, ""},
    {Mark::Tie, MarkGroup::Tie, ""},
    {Mark::OctaveUp, MarkGroup::Octave, ""},
    {Mark::OctaveDown, MarkGroup::Octave, ""},
    {Mark::IntervalTogether, MarkGroup::Dual, ""},
};

const MarkRow* RowOf(Mark mark) {
    for (const MarkRow& row : kMarks)
        if (row.mark == mark) return &row;
    return nullptr;
}

constexpr std::array<int, 7> kSharpOrder = {4, 1, 5, 2, 6, 3, 7}; // Fa Do Sol Re La Mi Si
constexpr std::array<int, 7> kFlatOrder = {7, 3, 6, 2, 5, 1, 4};  // Si Mi La Re Sol Do Fa

// The MusicXML kind of each chord kind, in the order of core's kind names. A major chord
// is shown by its root alone.
constexpr std::string_view kKindValues[] = {"major",
                                            "minor",
                                            "augmented",
                                            "diminished",
                                            "suspended-second",
                                            "suspended-fourth",
                                            "major-sixth",
                                            "minor-sixth",
                                            "dominant",
                                            "minor-seventh",
                                            "major-seventh",
                                            "major-minor",
                                            "diminished-seventh"};

} // namespace

std::optional<NoteType> NoteTypeOf(int ticks) {
    for (const NoteType& t : kTypes)
        if (t.ticks == ticks) return t;
    return std::nullopt;
}

MarkGroup MarkGroupOf(Mark mark) {
    const MarkRow* row = RowOf(mark);
    return row ? row->group : MarkGroup::None;
}

std::string MarkElement(const core::MarkWord& word) {
    const MarkRow* row = RowOf(word.mark);
    if (!row) return {};
    std::string element(row->element);
    if (const auto at = element.find('#'); at != std::string::npos)
        element.replace(at, 1, std::to_string(word.number));
    return element;
}

std::span<const int> SharpOrder() {
    return kSharpOrder;
}
std::span<const int> FlatOrder() {
    return kFlatOrder;
}

// The root's name is its step letter and "#" or "b".
std::optional<ChordRoot> ChordRootOf(char code) {
    const auto name = core::ChordRootName(code);
    if (!name || name->empty()) return std::nullopt;
    return ChordRoot{name->front(), name->ends_with('#') ? 1 : name->ends_with('b') ? -1 : 0};
}

std::optional<ChordKind> ChordKindOf(char code) {
    const auto name = core::ChordKindName(code);
    if (!name) return std::nullopt;
    const auto names = core::ChordKindNames();
    const auto index =
        static_cast<std::size_t>(std::find(names.begin(), names.end(), *name) - names.begin());
    if (index >= std::size(kKindValues)) return std::nullopt;
    const std::string_view value = kKindValues[index];
    return ChordKind{value, value == kKindValues[0] ? std::string_view() : *name};
}

} // namespace tahrir::musicxml
