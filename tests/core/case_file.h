#pragma once
// Cases kept as data, one a line: `name arg... expected`. Words are split at blanks; a word
// in double quotes may hold blanks and the escapes \r \n \" \\ and \xNN. Blank lines and
// lines starting with '#' are comments. Each name is a function of the runner that turns
// the arguments into a text, which must equal the expected word.

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tahrir::test {

using CaseFunction = std::function<std::string(const std::vector<std::string>&)>;

// The words of one line; `ok` is false for an unclosed quote.
inline std::vector<std::string> CaseWords(const std::string& line, bool& ok) {
    std::vector<std::string> words;
    ok = true;
    for (std::size_t i = 0; i < line.size();) {
        if (line[i] == ' ' || line[i] == '\t') {
            ++i;
        } else if (line[i] != '"') {
            const std::size_t end = line.find_first_of(" \t", i);
            words.push_back(line.substr(i, end - i));
            i = end == std::string::npos ? line.size() : end;
        } else {
            std::string word;
            for (++i; i < line.size() && line[i] != '"'; ++i) {
                if (line[i] != '\\' || i + 1 >= line.size()) {
                    word += line[i];
                    continue;
                }
                const char c = line[++i];
                if (c == 'x' && i + 2 < line.size()) {
                    word += static_cast<char>(std::stoi(line.substr(i + 1, 2), nullptr, 16));
                    i += 2;
                } else {
                    word += c == 'r' ? '\r' : c == 'n' ? '\n' : c;
                }
            }
            ok = ok && i < line.size();
            words.push_back(word);
            ++i;
        }
    }
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
        bool ok = false;
        std::vector<std::string> words = CaseWords(line, ok);
        const std::string where = file + ":" + std::to_string(number) + ": " + line;
        const auto function = functions.find(words[0]);
        if (!ok || words.size() < 2 || function == functions.end()) {
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
