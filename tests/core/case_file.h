#pragma once
// Cases kept as data, one a line: `name arg... expected`. Words are split at blanks; a word
// in double quotes may hold blanks (but no quote), and any word the escapes \r \n \\ and
// \xNN. Blank lines and lines starting with '#' are comments. Each name is a function of
// the runner that turns the arguments into a text, which must equal the expected word.

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <iomanip>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace tahrir::test {

using CaseFunction = std::function<std::string(const std::vector<std::string>&)>;

// A word with its escapes \r, \n and \xNN read; a backslash before any other character
// stands for that character.
inline std::string Unescaped(const std::string& word) {
    std::string out;
    for (std::size_t i = 0; i < word.size(); ++i) {
        const char c = word[i] == '\\' && i + 1 < word.size() ? word[++i] : 0;
        if (c == 'x' && i + 2 < word.size()) {
            out += static_cast<char>(std::stoi(word.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            out += c == 0 ? word[i] : c == 'r' ? '\r' : c == 'n' ? '\n' : c;
        }
    }
    return out;
}

// The words of one line; quotes are read with no escape of their own, so that the
// backslashes reach Unescaped.
inline std::vector<std::string> CaseWords(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> words;
    for (std::string word; in >> std::quoted(word, '"', '\x01');)
        words.push_back(Unescaped(word));
    return words;
}

// Runs every case of `file` through `functions`; each function must have a case.
inline void RunCaseFile(const std::string& file,
                        const std::map<std::string, CaseFunction>& functions) {
    std::ifstream in(file);
    ASSERT_TRUE(in) << "missing case file " << file;
    std::map<std::string, int> used;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (line.empty() || line[0] == '#') continue;
        std::vector<std::string> words = CaseWords(line);
        const std::string where = file + ":" + std::to_string(number) + ": " + line;
        const auto function = functions.find(words[0]);
        if (words.size() < 2 || function == functions.end()) {
            ADD_FAILURE() << "unreadable case at " << where;
            continue;
        }
        const std::string expected = words.back();
        words.pop_back();
        words.erase(words.begin());
        EXPECT_EQ(function->second(words), expected) << where;
        ++used[function->first];
    }
    for (const auto& [name, function] : functions)
        EXPECT_GT(used[name], 0) << name << " has no case in " << file;
}

// A number as the cases write it: no trailing zeros.
inline std::string CaseNumber(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

} // namespace tahrir::test
