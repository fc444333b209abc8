#pragma once
// Cases of table-driven tests kept as plain text under tests/data, one case a line; blank
// lines and lines starting with '#' are comments. Two forms:
// - rows (ReadCases): fields split at '|' and trimmed, a field in double quotes kept as
//   written;
// - named cases (RunCaseFile): `name arg... expected`, words split at blanks; a word in
//   double quotes may hold blanks (but no quote), and any word the escapes \r \n \\ and
//   \xNN. Each name is a function of the runner that turns the arguments into a text,
//   which must equal the expected word.

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

// Calls `each(text, where)` for every case line of `path`; `where` is "path:line".
template <typename Each> void ForEachCaseLine(const std::string& path, Each each) {
    std::ifstream in(path);
    EXPECT_TRUE(in) << "missing case file " << path;
    std::string text;
    for (int n = 1; std::getline(in, text); ++n)
        if (!text.empty() && text[0] != '#') each(text, path + ":" + std::to_string(n));
}

struct CaseRow {
    std::string where; // file and line, for failure messages
    std::vector<std::string> fields;
    const std::string& operator[](std::size_t i) const { return fields.at(i); }
    double number(std::size_t i) const { return std::stod(fields.at(i)); }
    int integer(std::size_t i) const { return std::stoi(fields.at(i), nullptr, 0); }
    // The numbers of field i, separated by spaces.
    std::vector<double> numbers(std::size_t i) const {
        std::istringstream in(fields.at(i));
        std::vector<double> out;
        for (double v = 0; in >> v;)
            out.push_back(v);
        return out;
    }
};

// The rows of the case file `name` under tests/data.
inline std::vector<CaseRow> ReadCases(const std::string& name) {
    std::vector<CaseRow> rows;
    ForEachCaseLine(std::string(TAHRIR_TEST_DATA) + "/" + name,
                    [&](const std::string& text, const std::string& where) {
                        CaseRow row{where, {}};
                        std::istringstream line(text);
                        for (std::string field; std::getline(line, field, '|');) {
                            field.erase(0, field.find_first_not_of(' '));
                            field.erase(field.find_last_not_of(' ') + 1);
                            if (field.size() >= 2 && field.front() == '"' && field.back() == '"')
                                field = field.substr(1, field.size() - 2);
                            row.fields.push_back(field);
                        }
                        rows.push_back(row);
                    });
    EXPECT_FALSE(rows.empty()) << name;
    return rows;
}

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
    std::map<std::string, int> used;
    ForEachCaseLine(file, [&](const std::string& line, const std::string& at) {
        std::vector<std::string> words = CaseWords(line);
        const std::string where = at + ": " + line;
        const auto function = functions.find(words[0]);
        if (words.size() < 2 || function == functions.end()) {
            ADD_FAILURE() << "unreadable case at " << where;
            return;
        }
        const std::string expected = words.back();
        words.pop_back();
        words.erase(words.begin());
        EXPECT_EQ(function->second(words), expected) << where;
        ++used[function->first];
    });
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
