#include "musicxml/notation_table.h"

#include <array>

namespace tahrir::musicxml {
namespace {

constexpr NoteType kTypes[] = {
    {1, "32nd", 0},    {2, "16th", 0},     {3, "16th", 1},  {4, "eighth", 0}, {6, "eighth", 1},
    {8, "quarter", 0}, {12, "quarter", 1}, {16, "half", 0}, {20, "half", 0},  {24, "half", 1},
    {28, "half", 2},   {32, "whole", 0},   {48, "whole", 1}};

// Riz is a three-stroke tremolo; dorrab and tekyeh have no element of their own.
constexpr MarkRow kMarks[] = {
    {"TR", MarkGroup::Ornament, "<trill-mark/>"},
    {"TB", MarkGroup::Ornament, "<trill-mark/><accidental-mark>flat</accidental-mark>"},
    {"M ", MarkGroup::Ornament, "<inverted-mordent/>"},
    {"?M", MarkGroup::Ornament, "<mordent/>"},
    {"T ", MarkGroup::Ornament, "<tremolo type=\"single\">3</tremolo>"},
    {"D ", MarkGroup::Ornament, "<other-ornament smufl=\"ornamentShake3\">dorrab</other-ornament>"},
    {"O ", MarkGroup::Ornament, "<other-ornament>tekyeh</other-ornament>"},
    {". ", MarkGroup::Articulation, "<staccato/>"},
    {"AC", MarkGroup::Articulation, "<accent/>"},
    {"+ ", MarkGroup::Technical, "<thumb-position/>"},
    {"0 ", MarkGroup::Technical, "<fingering>0</fingering>"},
    {"1 ", MarkGroup::Technical, "<fingering>1</fingering>"},
    {"2 ", MarkGroup::Technical, "<fingering>2</fingering>"},
    {"3 ", MarkGroup::Technical, "<fingering>3</fingering>"},
    {"4 ", MarkGroup::Technical, "<fingering>4</fingering>"},
    {"5 ", MarkGroup::Technical, "<fingering>5</fingering>"},
    {"1Z", MarkGroup::Technical, "<fingering>1</fingering>"},
    {"2Z", MarkGroup::Technical, "<fingering>2</fingering>"},
    {"3Z", MarkGroup::Technical, "<fingering>3</fingering>"},
    {"4Z", MarkGroup::Technical, "<fingering>4</fingering>"},
    {"1B", MarkGroup::Technical, "<fingering>1</fingering>"},
    {"2B", MarkGroup::Technical, "<fingering>2</fingering>"},
    {"3B", MarkGroup::Technical, "<fingering>3</fingering>"},
    {"4B", MarkGroup::Technical, "<fingering>4</fingering>"},
    {"7 ", MarkGroup::Technical, "<up-bow/>"},
    {"8 ", MarkGroup::Technical, "<down-bow/>"},
    {"L3", MarkGroup::Tuplet, "3"},
    {"L5", MarkGroup::Tuplet, "5"},
    {"L7", MarkGroup::Tuplet, "7"},
    {"L9", MarkGroup::Tuplet, "9"},
    {"TI", MarkGroup::Tie, ""},
    {"8U", MarkGroup::Octave, "1"},
    {"8D", MarkGroup::Octave, "-1"},
    {"?T", MarkGroup::Dual, ""},
};

constexpr std::array<int, 7> kSharpOrder = {4, 1, 5, 2, 6, 3, 7}; // Fa Do Sol Re La Mi Si
constexpr std::array<int, 7> kFlatOrder = {7, 3, 6, 2, 5, 1, 4};  // Si Mi La Re Sol Do Fa

// Roots "A".."L" in the sharp spelling, "N".."Y" in the flat one.
constexpr ChordRoot kSharpRoots[12] = {{'C', 0}, {'C', 1}, {'D', 0}, {'D', 1}, {'E', 0}, {'F', 0},
                                       {'F', 1}, {'G', 0}, {'G', 1}, {'A', 0}, {'A', 1}, {'B', 0}};
constexpr ChordRoot kFlatRoots[12] = {{'C', 0},  {'D', -1}, {'D', 0},  {'E', -1},
                                      {'E', 0},  {'F', 0},  {'G', -1}, {'G', 0},
                                      {'A', -1}, {'A', 0},  {'B', -1}, {'B', 0}};
constexpr ChordKind kKinds[13] = {{"major", ""},
                                  {"minor", "m"},
                                  {"augmented", "aug"},
                                  {"diminished", "dim"},
                                  {"suspended-second", "sus2"},
                                  {"suspended-fourth", "sus4"},
                                  {"major-sixth", "6"},
                                  {"minor-sixth", "m6"},
                                  {"dominant", "7"},
                                  {"minor-seventh", "m7"},
                                  {"major-seventh", "maj7"},
                                  {"major-minor", "m(maj7)"},
                                  {"diminished-seventh", "dim7"}};

} // namespace

std::optional<NoteType> NoteTypeOf(int ticks) {
    for (const NoteType& t : kTypes)
        if (t.ticks == ticks) return t;
    return std::nullopt;
}

std::optional<int> IntervalCount(char first) {
    if (first >= '1' && first <= '9') return first - '0';
    if (first >= 'A' && first <= 'K') return first - 'A' + 10;
    return std::nullopt;
}

std::optional<MarkRow> MarkRowOf(std::string_view mark) {
    if (mark.size() != 2) return std::nullopt;
    const std::string_view code = mark == "ST" ? std::string_view(". ") : mark;
    for (const MarkRow& row : kMarks) {
        if (row.code == code) return row;
        if (row.code[0] == '?' && row.code[1] == code[1] && IntervalCount(code[0])) return row;
    }
    return std::nullopt;
}

std::string_view AccidentalWord(char letter) {
    switch (letter) {
    case 'D':
        return "sharp";
    case 'B':
        return "flat";
    case 'S':
        return "sori";
    case 'K':
        return "koron";
    case 'N':
        return "natural";
    default:
        return {};
    }
}

std::span<const int> SharpOrder() {
    return kSharpOrder;
}
std::span<const int> FlatOrder() {
    return kFlatOrder;
}

std::optional<ChordRoot> ChordRootOf(char code) {
    if (code >= 'A' && code <= 'L') return kSharpRoots[code - 'A'];
    if (code >= 'N' && code <= 'Y') return kFlatRoots[code - 'N'];
    return std::nullopt;
}

std::optional<ChordKind> ChordKindOf(char code) {
    if (code >= 'A' && code < 'A' + 13) return kKinds[code - 'A'];
    return std::nullopt;
}

} // namespace tahrir::musicxml
