#pragma once
// The cases of a table-driven test, read from a plain text file under tests/data: one case
// a line, fields split at '|' and trimmed, a field in double quotes kept as written; blank
// lines and lines starting with '#' are left out.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace tahrir::test {

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
        for (double v = 0; in >> v;) out.push_back(v);
        return out;
    }
};

inline std::vector<CaseRow> ReadCases(const std::string& name) {
    std::ifstream in(std::string(TAHRIR_TEST_DATA) + "/" + name);
    EXPECT_TRUE(in) << "missing case file " << name;
    std::vector<CaseRow> rows;
    std::string text;
    for (int n = 1; std::getline(in, text); ++n) {
        if (text.empty() || text[0] == '#') continue;
        CaseRow row{name + ":" + std::to_string(n), {}};
        std::istringstream line(text);
        for (std::string field; std::getline(line, field, '|');) {
            field.erase(0, field.find_first_not_of(' '));
            field.erase(field.find_last_not_of(' ') + 1);
            if (field.size() >= 2 && field.front() == '"' && field.back() == '"')
                field = field.substr(1, field.size() - 2);
            row.fields.push_back(field);
        }
        rows.push_back(row);
    }
    EXPECT_FALSE(rows.empty()) << name;
    return rows;
}

} // namespace tahrir::test
