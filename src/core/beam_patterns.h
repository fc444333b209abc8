#pragma once
// The beam pattern table: which runs of short notes share a beam, and the code that the
// group's last note carries so that the renderer draws its sub-beams.

#include <array>
#include <cstddef>
#include <iterator>

namespace tahrir::core {

// Beams a short duration draws: eighths (4, 6) one, sixteenths (2, 3) two, 32nds (1) three.
constexpr int BeamLevel(int duration) {
    switch (duration) {
    case 4:
    case 6:
        return 1;
    case 2:
    case 3:
        return 2;
    case 1:
        return 3;
    default:
        return 0;
    }
}

// One figure of up to five durations in 32nds, the code of the group's last note, and how
// many notes of the figure form the group (0: all of them). A shorter group makes the rest
// of the figure a look-ahead test: {4, 4, 2, 2} with a group of 2 beams the eighths apart
// from the sixteenths after them. A group never holds more than four notes.
//
// The rows cover runs that do not fill the beat exactly; a run of two to four short notes
// that fills it is one group whatever its durations (MatchBeamPattern). The renderer draws
// the sub-beams from the members' durations; the closing code records the last step:
//   "c"  the last note's own level, full (also the plain close after a longer run);
//   "2"  a stub into the last note for the level it has above the others (8th-16th, 16th-32nd);
//   "7"  two such stubs (eighth then 32nd);
//   "4"  a stub out of the first note of a pair for its extra level (16th-8th, 32nd-16th);
//   "6"  two such stubs (32nd then eighth).
struct BeamPattern {
    std::array<int, 5> durations{}; // 0 ends a shorter figure
    char closing = 'c';
    int group = 0;

    constexpr int length() const {
        int n = 0;
        while (n < 5 && durations[static_cast<std::size_t>(n)] != 0)
            ++n;
        return n;
    }
    constexpr int groupSize() const { return group == 0 ? length() : group; }
    // Total of the whole figure: every note of it must fit in what is left of the beat.
    constexpr int sum() const {
        int total = 0;
        for (int d : durations)
            total += d;
        return total;
    }
};

// Rows are grouped by their first duration and, inside a group, longest figure first:
// the first row that matches is the longest one.
// clang-format off
inline constexpr BeamPattern kBeamPatterns[] = {
    // Groups that begin with a 32nd.
    {{1, 1, 1, 1},      'c'},
    {{1, 1, 1, 2},      'c'},
    {{1, 1, 1, 3},      'c'},
    {{1, 1, 1, 4},      'c'},
    {{1, 1, 1, 6},      'c'},
    {{1, 1, 2, 2},      'c', 2},
    {{1, 1, 1},         'c'},
    {{1, 1, 2},         'c'},
    {{1, 1, 3},         'c'},
    {{1, 1, 4},         'c'},
    {{1, 1, 6},         'c'},
    {{1, 1},            'c'},
    {{1, 2},            '4'},
    {{1, 3},            '4'},
    {{1, 4},            '6'},
    {{1, 6},            '6'},

    // Groups that begin with a 16th.
    {{2, 2, 2, 1, 1},   'c', 3},
    {{2, 2, 2, 4, 2},   'c', 3},
    {{2, 2, 1, 1},      'c', 2},
    {{2, 2, 2, 1},      '2'},
    {{2, 2, 2, 2},      'c'},
    {{2, 2, 2, 3},      'c'},
    {{2, 2, 2, 4},      'c'},
    {{2, 2, 2, 6},      'c'},
    {{2, 2, 3, 1},      '2'},
    {{2, 2, 3, 2},      'c'},
    {{2, 2, 3, 3},      'c'},
    {{2, 2, 3, 4},      'c'},
    {{2, 2, 6, 2},      'c', 2},
    {{2, 3, 2, 1},      '2'},
    {{2, 3, 2, 2},      'c'},
    {{2, 3, 2, 3},      'c'},
    {{2, 3, 2, 4},      'c'},
    {{2, 3, 3, 1},      '2'},
    {{2, 3, 3, 2},      'c'},
    {{2, 3, 3, 3},      'c'},
    {{2, 3, 3, 4},      'c'},
    {{2, 2, 1},         '2'},
    {{2, 2, 2},         'c'},
    {{2, 2, 3},         'c'},
    {{2, 2, 4},         'c'},
    {{2, 2, 6},         'c'},
    {{2, 3, 1},         '2'},
    {{2, 3, 2},         'c'},
    {{2, 3, 3},         'c'},
    {{2, 3, 4},         'c'},
    {{2, 3, 6},         'c'},
    {{2, 1},            '2'},
    {{2, 2},            'c'},
    {{2, 3},            'c'},
    {{2, 4},            '4'},
    {{2, 6},            '4'},

    // Groups that begin with a dotted 16th.
    {{3, 2, 2, 1},      '2'},
    {{3, 2, 2, 2},      'c'},
    {{3, 2, 2, 3},      'c'},
    {{3, 2, 2, 4},      'c'},
    {{3, 2, 3, 1},      '2'},
    {{3, 2, 3, 2},      'c'},
    {{3, 2, 3, 3},      'c'},
    {{3, 2, 3, 4},      'c'},
    {{3, 3, 1, 1},      'c', 2},
    {{3, 3, 2, 1},      '2'},
    {{3, 3, 2, 2},      'c'},
    {{3, 3, 2, 3},      'c'},
    {{3, 3, 2, 4},      'c'},
    {{3, 3, 3, 1},      '2'},
    {{3, 3, 3, 2},      'c'},
    {{3, 3, 3, 3},      'c'},
    {{3, 2, 1},         '2'},
    {{3, 2, 2},         'c'},
    {{3, 2, 3},         'c'},
    {{3, 2, 4},         'c'},
    {{3, 2, 6},         'c'},
    {{3, 3, 1},         '2'},
    {{3, 3, 2},         'c'},
    {{3, 3, 3},         'c'},
    {{3, 3, 4},         'c'},
    {{3, 3, 6},         'c'},
    {{3, 1},            '2'},
    {{3, 2},            'c'},
    {{3, 3},            'c'},
    {{3, 4},            '4'},
    {{3, 6},            '4'},

    // Groups that begin with a eighth.
    {{4, 4, 2, 2},      'c', 2},
    {{4, 1, 1},         'c'},
    {{4, 2, 2},         'c'},
    {{4, 4, 1},         '7'},
    {{4, 4, 2},         '2'},
    {{4, 4, 3},         '2'},
    {{4, 4, 4},         'c'},
    {{4, 6, 1},         '7'},
    {{4, 6, 2},         '2'},
    {{4, 1},            '7'},
    {{4, 2},            '2'},
    {{4, 3},            '2'},
    {{4, 4},            'c'},
    {{4, 6},            'c'},

    // Groups that begin with a dotted eighth.
    {{6, 1, 1},         'c'},
    {{6, 4, 1},         '7'},
    {{6, 4, 2},         '2'},
    {{6, 1},            '7'},
    {{6, 2},            '2'},
    {{6, 3},            '2'},
    {{6, 4},            'c'},
    {{6, 6},            'c'},
};
// clang-format on

// Rows [begin, end) of the table whose figure starts with `first`; empty for other values.
struct PatternRange {
    int begin = 0;
    int end = 0;
};

constexpr PatternRange PatternsStartingWith(int first) {
    PatternRange range;
    const int count = static_cast<int>(std::size(kBeamPatterns));
    while (range.begin < count && kBeamPatterns[range.begin].durations[0] != first)
        ++range.begin;
    range.end = range.begin;
    while (range.end < count && kBeamPatterns[range.end].durations[0] == first)
        ++range.end;
    return range;
}

// The lookup above relies on the order: one block per first duration, longest first.
constexpr bool PatternTableIsOrdered() {
    const int count = static_cast<int>(std::size(kBeamPatterns));
    for (int i = 1; i < count; ++i) {
        const BeamPattern& a = kBeamPatterns[i - 1];
        const BeamPattern& b = kBeamPatterns[i];
        if (a.durations[0] == b.durations[0] && a.length() < b.length()) return false;
        if (a.durations[0] != b.durations[0] && PatternsStartingWith(b.durations[0]).begin != i)
            return false;
    }
    return true;
}
static_assert(PatternTableIsOrdered(), "beam patterns must be grouped and longest first");

inline constexpr int kMaxBeamGroup = 4; // notes under one beam

constexpr bool PatternGroupsAreShort() {
    for (const BeamPattern& row : kBeamPatterns)
        if (row.groupSize() > kMaxBeamGroup) return false;
    return true;
}
static_assert(PatternGroupsAreShort(), "a beam group holds at most four notes");

// The blocks of the table by first duration, worked out when compiling.
inline constexpr auto kPatternBlocks = [] {
    std::array<PatternRange, 7> blocks{};
    for (int first = 1; first < 7; ++first)
        blocks[static_cast<std::size_t>(first)] = PatternsStartingWith(first);
    return blocks;
}();

} // namespace tahrir::core
