#pragma once
// Compares a text with its golden file; TAHRIR_UPDATE_GOLDEN=1 writes the file instead.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace tahrir::test {

inline void ExpectGoldenText(const std::string& path, const std::string& actual) {
    if (const char* update = std::getenv("TAHRIR_UPDATE_GOLDEN"); update && std::string(update) == "1") {
        std::ofstream(path, std::ios::binary) << actual;
        return;
    }
    std::ifstream in(path, std::ios::binary);
    ASSERT_TRUE(in) << "missing golden file " << path << " (run with TAHRIR_UPDATE_GOLDEN=1)";
    std::stringstream expected;
    expected << in.rdbuf();
    EXPECT_EQ(expected.str(), actual) << "differs from " << path;
}

} // namespace tahrir::test
