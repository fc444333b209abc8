// The palette read-out of one line.

#include <gtest/gtest.h>

#include <vector>

#include "edit/line_state.h"

namespace tahrir::edit {

namespace {
std::vector<int> Derived(const char* line) {
    const LitSet lit = ShowLineState(line);
    std::vector<int> keys;
    for (int k = 0; k < PaletteSize; ++k) {
        const bool fixed = k == 58 || k == 59 || k == 60 || k == 71 || k == 72;
        if (lit.test(static_cast<std::size_t>(k)) && !fixed) keys.push_back(k);
    }
    return keys;
}
using V = std::vector<int>;
} // namespace

TEST(ShowLineState, NoteFieldsLightTheirKeys) {
    EXPECT_EQ(Derived("03 -1                 "), (V{0, 1})); // every barline reads as grace
    EXPECT_EQ(Derived("33 12S 8U  "), (V{8, 14, 33, 63}));   // duration, sori, mark, Mi
    EXPECT_EQ(Derived("13  8  ST"), (V{7, 40, 61}));         // old staccato
    EXPECT_EQ(Derived("13  8  . "), (V{7, 40, 61}));
    EXPECT_EQ(Derived("13 -1  TI"), (V{1, 46, 61}));
    EXPECT_EQ(Derived("73 32  7 "), (V{11, 56, 67}));
}

TEST(ShowLineState, IntervalsAndFingersAreToldApart) {
    EXPECT_EQ(Derived("13  8  3T"), (V{7, 30, 61}));
    EXPECT_EQ(Derived("13  8  KM"), (V{7, 31, 61}));
    EXPECT_EQ(Derived("13  8  LM"), (V{7, 61})); // beyond "K": no interval
    EXPECT_EQ(Derived("13  8  2 "), (V{7, 50, 61}));
    EXPECT_EQ(Derived("13  8  4Z"), (V{7, 52, 61}));
    EXPECT_EQ(Derived("13  8  1M"), (V{7, 31, 61}));
}

TEST(ShowLineState, DirectiveAndLFamilyLines) {
    EXPECT_EQ(Derived("L         "), (V{18}));
    EXPECT_EQ(Derived("L^Ms=1"), V{});
    EXPECT_EQ(Derived("L-Title"), V{});
    EXPECT_EQ(Derived("ALL3K   "), (V{15, 17}));
    EXPECT_EQ(Derived("ALL8U   "), (V{27}));
    EXPECT_EQ(Derived("ALL9K   "), V{}); // step digit beyond 7
    EXPECT_EQ(Derived("REPS}   "), (V{26}));
    EXPECT_EQ(Derived("RHITHM3/4"), (V{54}));
    EXPECT_EQ(Derived("TEMPO 60"), (V{48, 55})); // columns 8..9 read "0 " as a finger
}

TEST(ShowLineState, FixedKeysStayAndClipboardKeysAreKept) {
    LitSet before;
    before.set(0);
    before.set(69);
    const LitSet lit = ShowLineState("L-x", before);
    EXPECT_FALSE(lit.test(0));
    EXPECT_TRUE(lit.test(69));
    for (int k : {58, 59, 60, 71, 72})
        EXPECT_TRUE(lit.test(static_cast<std::size_t>(k))) << k;
}

} // namespace tahrir::edit
