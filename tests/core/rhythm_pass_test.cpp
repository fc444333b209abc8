#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/rhythm_pass.h"

using namespace tahrir::core;

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

TEST(ReadMeasure, LengthAndCompoundTime) {
    // "1/3" keeps the integer part of 10.67; a six-letter spelling ("M4/4") reads 0.
    const std::tuple<const char*, float, bool> cases[] = {
        {"4/4", 32, false},  {"3/8", 12, false},        {"6/8", 24, true},
        {"12/16", 24, true}, {"9/16", 18, false},       {"1/3", 10, false},
        {"32/32", 32, false}, {"4/0", kNoBarCheck, false}, {"0/4", kNoBarCheck, false},
        {"M4/4", kNoBarCheck, false}, {"-3/4", kNoBarCheck, false}, {"", kNoBarCheck, false}};
    for (const auto& [text, ticks, compound] : cases) {
        EXPECT_EQ(ReadMeasure(text).MeasureTicks, ticks) << text;
        EXPECT_EQ(ReadMeasure(text).CompoundMeasure, compound) << text;
    }
}

TEST(RhythmPass, CommonFiguresGroupByTheBeat) {
    const std::tuple<const char*, std::vector<int>, const char*> cases[] = {
        {"4/4", {4, 4, 4, 4, 4, 4, 4, 4}, "CcCcCcCc"},
        {"6/8", {4, 4, 4, 4, 4, 4}, "CCcCCc"},
        {"2/4", {2, 2, 2, 2, 2, 2, 2, 2}, "CCCcCCCc"},
        {"2/4", {6, 2, 2, 6}, "C2C4"},    // dotted eighth with its sixteenth
        {"2/4", {4, 2, 2, 2, 2, 4}, "CCcCCc"}, // an eighth and two 16ths make one beat
        {"4/4", {2, 4, 4, 2}, "C4  "},    // 2 + 4 fill six 32nds; the next eighth would cross
        {"4/4", {8, 4, 4, 16}, " Cc "},
        {"3/8", {4, 4, 4, 4, 4, 4}, "Cc Cc "}, // not compound: a beat of 8, then the 4 left
        {"1/8", {4, 4}, "  "},            // a measure of one eighth
        {"4/0", {4, 4, 4, 4}, "CcCc"},    // no bar check: beats of 8 run on
        {"2/4", {1, 1, 1, 1, 1, 1, 1, 1}, "CCCcCCCc"}, // four notes at most to a group
    };
    for (const auto& [rhythm, durations, codes] : cases)
        EXPECT_EQ(Beamed(rhythm, durations), codes) << rhythm << " from " << durations[0];
}

TEST(RhythmPass, GroupsStopAtRestsBarlinesGraceNotesDirectivesAndTuplets) {
    // The barline restarts the count, so the 16ths after it start a beat. Three eighths
    // marked "L3" fill one beat of 2/4; a tuplet never joins a group begun before it.
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{Note(4), "03  4    ", Note(4), "03 -1", Note(2), Note(2), "14 -1", Note(2), Note(2),
          "TEMPO 90", Note(4), Note(4)},
         "    Cc Cc|Cc"},
        {{Note(4, "L3"), Note(4), Note(4), Note(4), Note(4)}, "CCcCc"},
        {{Note(2), Note(2, "L3"), Note(2), Note(2), Note(4)}, " CCc "},
    };
    for (const auto& [music, codes] : cases) {
        ScoreSheet sheet = MakeSheet("2/4", music);
        RhythmPass(sheet);
        EXPECT_EQ(Codes(sheet), codes);
    }
    // Lines behind LastLine are stale: the look-ahead never reads them.
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

TEST(RhythmPass, RhythmChangesMidScore) {
    auto run = [](const std::string& change) {
        std::vector<std::string> music(6, Note(4));
        music.push_back("03 -1");
        music.push_back(change);
        music.insert(music.end(), 6, Note(4));
        ScoreSheet sheet = MakeSheet("3/8", music);
        RhythmPass(sheet);
        return Codes(sheet);
    };
    // 3/8 beams 8 + 4: two eighths, then one alone.
    EXPECT_EQ(run("RHYTM6/8"), "Cc Cc  |CCcCCc");
    EXPECT_EQ(run("RHITM6/8"), "Cc Cc  |CCcCCc");
    EXPECT_EQ(run("RHYTHM6/8"), "Cc Cc  |CcCcCc") << "six letters: numerator 0, bar check off";
    EXPECT_EQ(run("RHITHM6/8"), "Cc Cc  |Cc Cc ") << "not a rhythm change here: 3/8 goes on";
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
