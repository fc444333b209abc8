#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "case_files.h"
#include "core/rhythm_pass.h"

using namespace tahrir::core;
using tahrir::test::CaseNumber;
using tahrir::test::RunCaseFile;

namespace {

std::string Note(int duration, const std::string& mark = "  ") {
    std::string word = std::to_string(duration);
    return "14" + std::string(3 - word.size(), ' ') + word + "  " + mark;
}

// A sheet with the fixed head (key signature, tempo, rhythm) and the music from line 4.
ScoreSheet MakeSheet(const std::string& rhythm, const std::vector<std::string>& music) {
    ScoreSheet sheet;
    sheet[1] = "       G  ";
    sheet[2] = "TEMPO 60";
    sheet[3] = "RHYTM" + rhythm;
    sheet.LastLine = 3;
    for (const auto& line : music) sheet[++sheet.LastLine] = line;
    return sheet;
}

ScoreSheet NoteSheet(const std::string& rhythm, const std::vector<int>& durations) {
    std::vector<std::string> music;
    for (int d : durations) music.push_back(Note(d));
    return MakeSheet(rhythm, music);
}

// Column 7 of the music lines ("|" for a line that is not a note, rest or barline).
std::string Codes(const ScoreSheet& sheet) {
    std::string out;
    for (int i = 4; i <= sheet.LastLine; ++i)
        out += sheet[i].at(1) >= '0' && sheet[i].at(1) <= '9' ? sheet[i].at(7) : '|';
    return out;
}

std::string Beamed(const std::string& rhythm, const std::vector<int>& durations) {
    ScoreSheet sheet = NoteSheet(rhythm, durations);
    RhythmPass(sheet);
    return Codes(sheet);
}

// Every way to split `total` into `parts` notes of the short durations, dotted ones too.
void Divisions(int total, int parts, std::vector<int>& prefix,
               std::vector<std::vector<int>>& out) {
    if (parts == 0) {
        if (total == 0) out.push_back(prefix);
        return;
    }
    for (int d : {1, 2, 3, 4, 6}) {
        if (d > total) continue;
        prefix.push_back(d);
        Divisions(total - d, parts - 1, prefix, out);
        prefix.pop_back();
    }
}

} // namespace

TEST(RhythmPass, EveryDivisionOfABeatIsOneGroup) {
    // A beat of 8 in simple time and of 12 in compound time, split into one to four notes,
    // on each beat of the measure: each beat is one group of its own.
    for (const auto& [rhythm, beat] : {std::pair{"2/4", 8}, std::pair{"6/8", 12}}) {
        std::vector<std::vector<int>> divisions;
        std::vector<int> prefix;
        for (int parts = 1; parts <= 4; ++parts) Divisions(beat, parts, prefix, divisions);
        EXPECT_GT(divisions.size(), 20u);
        for (const std::vector<int>& division : divisions) {
            std::vector<int> measure = division;
            measure.insert(measure.end(), division.begin(), division.end());
            const std::string group = std::string(division.size() - 1, 'C');
            const std::string codes = Beamed(rhythm, measure);
            std::string shown;
            for (int d : division) shown += std::to_string(d) + " ";
            EXPECT_EQ(codes.substr(0, group.size()), group) << rhythm << ": " << shown;
            EXPECT_EQ(codes.substr(division.size(), group.size()), group) << rhythm << ": " << shown;
            for (std::size_t end : {division.size() - 1, 2 * division.size() - 1})
                EXPECT_EQ(std::string(" C").find(codes[end]), std::string::npos)
                    << rhythm << ": " << shown << "is closed";
        }
    }
}

// Measure lengths and beam codes, each case a line of the data file.
TEST(RhythmPass, MeasuresAndBeamCodesOfTheCaseFile) {
    using Args = std::vector<std::string>;
    RunCaseFile(std::string(TAHRIR_TEST_DATA) + "/core/rhythm.txt",
                {{"measure",
                  [](const Args& a) {
                      const Measure m = ReadMeasure(a[0]);
                      return (m.MeasureTicks == kNoBarCheck ? "none" : CaseNumber(m.MeasureTicks)) +
                             (m.CompoundMeasure ? " compound" : "");
                  }},
                 {"beams", [](const Args& a) {
                      std::vector<std::string> music;
                      for (std::size_t i = 1; i < a.size(); ++i) {
                          const auto colon = a[i].find(':');
                          const bool note = a[i].find_first_not_of("0123456789") >= colon;
                          music.push_back(!note ? a[i]
                                          : colon == std::string::npos
                                              ? Note(std::stoi(a[i]))
                                              : Note(std::stoi(a[i]), a[i].substr(colon + 1)));
                      }
                      ScoreSheet sheet = MakeSheet(a[0], music);
                      RhythmPass(sheet);
                      return Codes(sheet);
                  }}});
}

TEST(RhythmPass, LinesBehindTheLastAreStaleAndNeverRead) {
    ScoreSheet cut = NoteSheet("2/4", {2, 2, 2, 2});
    cut.LastLine = 6;
    RhythmPass(cut);
    EXPECT_EQ(Codes(cut), "CCc");
    EXPECT_EQ(cut[7].text(), Note(2));
}

TEST(RhythmPass, StoredCodesAreBlankedAndOtherColumnsKept) {
    ScoreSheet sheet = MakeSheet(
        "4/4", {"14  8 C TR", "03  8 e", "14  4 7", "14  4 C", "L_abcdefgh", "TEMPO 120"});
    sheet[1] = "DBSKNDBG  "; // column 7 of line 1 is the key signature's Si
    RhythmPass(sheet);
    std::vector<std::string> lines;
    for (int i : {1, 4, 5, 6, 7, 8, 9}) lines.push_back(sheet[i].text());
    // Line 6 keeps "C" because it is recomputed, not kept.
    EXPECT_EQ(lines, (std::vector<std::string>{"DBSKNDBG  ", "14  8   TR", "03  8  ", "14  4 C",
                                               "14  4 c", "L_abcdefgh", "TEMPO 120"}));
}

TEST(RhythmPass, FullSheetAndRepeatedRuns) {
    ScoreSheet sheet = NoteSheet("4/4", std::vector<int>(MaxLines - 3, 4));
    ASSERT_EQ(sheet.LastLine, MaxLines);
    RhythmPass(sheet);
    const std::string first = Codes(sheet);
    EXPECT_EQ(first.find("CC"), std::string::npos);
    EXPECT_NE(first.back(), 'C') << "the look-ahead stops at the last line";
    RhythmPass(sheet);
    EXPECT_EQ(Codes(sheet), first);
}
