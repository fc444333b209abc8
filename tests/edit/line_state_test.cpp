// The palette read-out of one line.

#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

#include "case_files.h"
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
    int cases = 0;
    test::ForEachCaseLine(std::string(TAHRIR_TEST_DATA) + "/edit/line_state.txt",
                          [&](const std::string& text, const std::string& where) {
                              std::istringstream words(text);
                              std::string line;
                              words >> std::quoted(line);
                              std::vector<int> keys;
                              for (int k = 0; words >> k;)
                                  keys.push_back(k);
                              EXPECT_EQ(Derived(line.c_str()), keys) << where;
                              ++cases;
                          });
    EXPECT_GT(cases, 0);
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
