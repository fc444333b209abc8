// Any sheet draws: random mixtures of every line kind, damaged fields included, go through
// every view and target without a fault, and the position table stays consistent.

#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "case_files.h"
#include "render/hit_targets.h"
#include "sheet_builder.h"

namespace tahrir::render {
namespace {

// The lines random sheets are made of, from the data file.
std::vector<std::string> Vocabulary() {
    std::ifstream in(std::string(TAHRIR_TEST_DATA) + "/render/vocabulary.txt");
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        if (!line.empty() && line[0] != '#') lines.push_back(tahrir::test::CaseWords(line).at(0));
    return lines;
}

TEST(Robustness, RandomSheetsDrawInEveryViewWithoutFault) {
    const std::vector<std::string> vocabulary = Vocabulary();
    ASSERT_GT(vocabulary.size(), 60u);
    std::mt19937 rng(20240611);
    std::uniform_int_distribution<std::size_t> pick(0, vocabulary.size() - 1);
    std::uniform_int_distribution<int> length(0, 400);
    for (int round = 0; round < 60; ++round) {
        core::ScoreSheet sheet = test::MakeSheet({round % 2 ? "DBSKN  F" : "       G",
                                                  round % 3 ? "TEMPO60" : "TEMPO-2",
                                                  round % 5 ? "RHYTM4/4" : "RHYTM0/0"},
                                                 false);
        const int n = length(rng);
        for (int k = 0; k < n; ++k) test::Repeat(sheet, vocabulary[pick(rng)]);
        for (View view : {View::Page, View::Working}) {
            LayoutOptions o;
            o.ViewMode = view, o.PageWidthUnits = 20 + round, o.DxfEnabled = true;
            o.ChPrint = round % 4 == 0;
            const LayoutResult r = RefreshView(sheet, o);
            ASSERT_GE(r.rows, 1);
            for (int i = 4; i <= sheet.LastLine; ++i)
                if (r.positions.LinePosX[i] != -1) {
                    EXPECT_GE(r.positions.LinePosY[i], 0) << "line " << i;
                }
            EXPECT_TRUE(r.dxf.ends_with("EOF\r\n"));
        }
    }
}

TEST(HitTargets, APointOnAHeadFindsItsLine) {
    const auto r = test::Lay(test::Body({"73  8", "14  8", "L_word"}));
    // The head of line 4 is centred 2 units above the bottom line, about 0.7 right of PenX.
    EXPECT_EQ(LineAt(r, r.positions.LinePosX[4] + 0.7, 26 - 2), 4);
    EXPECT_EQ(LineAt(r, r.positions.LinePosX[5] + 0.7, 26 - 2.5), 5);
    EXPECT_EQ(LineAt(r, r.positions.LinePosX[5] + 0.7, 26 - 12), 0);
    EXPECT_EQ(LineAt(r, 1, 1), 0);
}

} // namespace
} // namespace tahrir::render
