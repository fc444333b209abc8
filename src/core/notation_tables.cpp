#include "core/notation_tables.h"

#include <array>

namespace tahrir::core {

namespace {

constexpr AccidentalRow kAccidentals[] = {
    {Accidental::Sharp, 'D', "#", 1, 3, 2, "sharp"},
    {Accidental::Flat, 'B', "b", -1, 3, -2, "flat"},
    {Accidental::Sori, 'S', "<", 0, 4, 1, "sori"},
    {Accidental::Koron, 'K', "!", 0, 2, -1, "koron"},
    {Accidental::Natural, 'N', "n", 0, 3, 0, "natural"},
};

// The fixed mark words; the numbered families are told apart in ReadMark.
struct MarkRow {
    const char* word;
    Mark mark;
};
constexpr MarkRow kMarks[] = {
    {"M ", Mark::Mordent},   {"8U", Mark::OctaveUp},     {"8D", Mark::OctaveDown},
    {"TR", Mark::Trill},     {"TB", Mark::TrillFlat},    {"T ", Mark::Riz},
    {"D ", Mark::Dorrab},    {"O ", Mark::Tekyeh},       {". ", Mark::Staccato},
    {"ST", Mark::Staccato},  {"AC", Mark::Accent},       {"TI", Mark::Tie},
    {"+ ", Mark::Thumb},     {"7 ", Mark::PlectrumLeft}, {"8 ", Mark::PlectrumRight},
    {"  ", Mark::None},
};

constexpr std::array<std::string_view, 12> kSharpRoots = {"C",  "C#", "D",  "D#", "E",  "F",
                                                          "F#", "G",  "G#", "A",  "A#", "B"};
constexpr std::array<std::string_view, 12> kFlatRoots = {"C",  "Db", "D",  "Eb", "E",  "F",
                                                         "Gb", "G",  "Ab", "A",  "Bb", "B"};
constexpr std::array<std::string_view, 13> kChordKinds = {
    "M", "m", "aug", "dim", "sus2", "sus4", "6", "m6", "7", "m7", "maj7", "m(maj7)", "dim7"};

} // namespace

std::span<const AccidentalRow> AccidentalTable() {
    return kAccidentals;
}

Accidental AccidentalOf(char letter) {
    if (letter == ' ') return Accidental::None;
    for (const AccidentalRow& row : kAccidentals)
        if (row.letter == letter) return row.accidental;
    return Accidental::Unknown;
}

const AccidentalRow* AccidentalRowOf(Accidental accidental) {
    for (const AccidentalRow& row : kAccidentals)
        if (row.accidental == accidental) return &row;
    return nullptr;
}

int IntervalSteps(char c) {
    if (c >= '1' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'K') return 10 + (c - 'A');
    return 0;
}

char IntervalCharOf(int steps) {
    if (steps >= 1 && steps <= 9) return static_cast<char>('0' + steps);
    if (steps >= 10 && steps <= 20) return static_cast<char>('A' + steps - 10);
    return ' ';
}

MarkWord ReadMark(char first, char second) {
    MarkWord word{Mark::Other, 0, first, second};
    for (const MarkRow& row : kMarks)
        if (row.word[0] == first && row.word[1] == second) {
            word.mark = row.mark;
            return word;
        }
    const int steps = IntervalSteps(first);
    if (steps > 0 && (second == 'M' || second == 'T')) {
        word.mark = second == 'M' ? Mark::IntervalMordent : Mark::IntervalTogether;
        word.number = steps;
    } else if (first == 'L' && (second == '3' || second == '5' || second == '7' || second == '9')) {
        word.mark = Mark::Tuplet;
        word.number = second - '0';
    } else if (first >= '0' && first <= '5' &&
               (second == ' ' || (first != '0' && first != '5' && (second == 'Z' || second == 'B')))) {
        word.mark = Mark::Finger;
        word.number = first - '0';
    }
    return word;
}

std::string_view MarkCodeOf(Mark mark) {
    for (const MarkRow& row : kMarks)
        if (row.mark == mark) return row.word;
    return {};
}

std::optional<std::string_view> ChordRootName(char code) {
    if (code >= 'A' && code < 'A' + 12) return kSharpRoots[static_cast<std::size_t>(code - 'A')];
    if (code >= FlatRootBase && code < FlatRootBase + 12)
        return kFlatRoots[static_cast<std::size_t>(code - FlatRootBase)];
    return std::nullopt;
}

std::optional<std::string_view> ChordKindName(char code) {
    if (code >= 'A' && code < 'A' + static_cast<int>(kChordKinds.size()))
        return kChordKinds[static_cast<std::size_t>(code - 'A')];
    return std::nullopt;
}

std::span<const std::string_view> ChordRootNames(bool flat) {
    return flat ? std::span<const std::string_view>(kFlatRoots) : kSharpRoots;
}

std::span<const std::string_view> ChordKindNames() {
    return kChordKinds;
}

} // namespace tahrir::core
