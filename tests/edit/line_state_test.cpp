// The palette read-out of one line.

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "edit/line_state.h"

namespace tahrir::edit {

namespace {
constexpr int kFixed[] = {58, 59, 60, 71, 72}; // lit whatever the line

std::vector<int> Derived(const char* line) {
    const LitSet lit = ShowLineState(line);
    std::vector<int> keys;
    for (int k = 0; k < PaletteEntries; ++k)
        if (lit.test(static_cast<std::size_t>(k)) &&
            std::ranges::find(kFixed, k) == std::end(kFixed))
            keys.push_back(k);
    return keys;
}
} // namespace

TEST(ShowLineState, EachLineLightsItsKeys) {
    const std::pair<const char*, std::vector<int>> cases[] = {
        // Note fields.
        {"03 -1                 ", {0, 1}}, // every barline reads as grace
        {"33 12S 8U  ", {8, 14, 33, 63}},   // duration, sori, mark, Mi
        {"13  8  ST", {7, 40, 61}},         // old staccato
        {"13  8  . ", {7, 40, 61}},
        {"13 -1  TI", {1, 46, 61}},
        {"73 32  7 ", {11, 56, 67}},
        // Intervals and fingers.
        {"13  8  3T", {7, 30, 61}},
        {"13  8  KM", {7, 31, 61}},
        {"13  8  LM", {7, 61}}, // beyond "K": no interval
        {"13  8  2 ", {7, 50, 61}},
        {"13  8  4Z", {7, 52, 61}},
        {"13  8  1M", {7, 31, 61}},
        // Directives and the L family.
        {"L         ", {18}},
        {"L^Ms=1", {}},
        {"L-Title", {}},
        {"ALL3K   ", {15, 17}},
        {"ALL8U   ", {27}},
        {"ALL9K   ", {}}, // step digit beyond 7
        {"REPS}   ", {26}},
        {"RHITHM3/4", {54}},
        {"TEMPO 60", {48, 55}}, // columns 8..9 read "0 " as a finger
    };
    for (const auto& [line, keys] : cases)
        EXPECT_EQ(Derived(line), keys) << '"' << line << '"';
}

TEST(ShowLineState, FixedKeysStayAndClipboardKeysAreKept) {
    LitSet before;
    before.set(0);
    before.set(69);
    const LitSet lit = ShowLineState("L-x", before);
    EXPECT_FALSE(lit.test(0));
    EXPECT_TRUE(lit.test(69));
    for (int k : kFixed)
        EXPECT_TRUE(lit.test(static_cast<std::size_t>(k))) << k;
}

} // namespace tahrir::edit
