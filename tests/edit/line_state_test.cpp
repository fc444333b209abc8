// The palette read-out of one line.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <string>
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
    const std::string path = std::string(TAHRIR_TEST_DATA) + "/edit/line_state.txt";
    std::ifstream in(path);
    ASSERT_TRUE(in) << path;
    int cases = 0;
    for (std::string text; std::getline(in, text);) {
        if (text.empty() || text[0] == '#') continue;
        std::istringstream words(text);
        std::string line;
        words >> std::quoted(line);
        std::vector<int> keys;
        for (int k = 0; words >> k;)
            keys.push_back(k);
        EXPECT_EQ(Derived(line.c_str()), keys) << text;
        ++cases;
    }
    EXPECT_GT(cases, 0) << path;
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
