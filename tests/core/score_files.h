#pragma once
// Small score files of each generation, made in the tests.

#include <initializer_list>
#include <string>
#include <vector>

#include "core/score_sheet.h"

namespace tahrir::test {

inline std::string JoinLines(std::initializer_list<std::string> lines) {
    std::string out;
    for (const auto& line : lines) out += line + "\r\n";
    return out;
}

inline std::string Sv5File(const std::string& description, std::initializer_list<std::string> lines) {
    return "\"Sv5\"\r\n\"" + description + "\"\r\n" + JoinLines(lines);
}

inline std::string MarkerFile(const std::string& description, std::initializer_list<std::string> lines) {
    return "\"Sorvan4 SRV File\"\r\n\"" + description + "\"\r\n" + JoinLines(lines);
}

inline std::string OldestFile(const std::string& description, std::initializer_list<std::string> lines) {
    return "\"" + description + "\"\r\n" + JoinLines(lines);
}

// The old line scrambling that the reader undoes: each character but a blank gains 10
// plus its 1-based position.
inline std::string ScrambleLine(const std::string& line) {
    std::string out(line);
    for (std::size_t i = 0; i < out.size(); ++i)
        if (out[i] != ' ') out[i] = static_cast<char>(static_cast<unsigned char>(out[i]) + 10 + i + 1);
    return out;
}

// The texts of lines from..to of a sheet, to compare in one go.
inline std::vector<std::string> SheetText(const core::ScoreSheet& sheet, int from, int to) {
    std::vector<std::string> out;
    for (int i = from; i <= to; ++i) out.push_back(sheet[i].text());
    return out;
}

} // namespace tahrir::test
