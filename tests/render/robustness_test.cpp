// Any sheet draws: random mixtures of every line kind, damaged fields included, go through
// every view and target without a fault, and the position table stays consistent.

#include <gtest/gtest.h>

#include <random>

#include "render/hit_targets.h"
#include "sheet_builder.h"

namespace tahrir::render {
namespace {

const char* const kVocabulary[] = {
    "13  8", "73  4 C", "14  2 e", "53  1 c", "63  4 5", "23  2 7", "33  1 6", "43 12D",
    "27 16B", "19 32S  TI", "53  8K M ", "63  4  4Z", "73  4  KT", "14  2  3M", "03  8",
    "03 16", "03  1", "03 -1", "13 -1", "73 48", "73 20", "73 10", "9Z  4", "0x 32",
    "L  ", "L-text", "L^Ms=3", "L_\xC7\xE6\xC7\xD2", "LvT=80", "L<left", "L>Midi In",
    "LCTFS=1.5", "LCMFS=0.5", "LCLFT=20", "LCTOP=30", "LCDBL=0", "LCFON=", "LCFIN",
    "REP{", "REP}", "REPS{", "REPS}", "REPB1", "REPB2", "VOL{1", "VOL{2", "ALL8U",
    "ALL8D", "ALL8N", "ALL3S", "ALL9K", "GSIGN", "FSIGN", "TEMPO-5", "TEMPO120",
    "RHYTM3/4", "RHITM32/32", "RHYTHM4/4", "RHYTM/", "RHYTM4/0", "??garbage", "",
    "13  8  L3", "13  8  L5", "13  8  L9", "43  4 .  AZ", "53  4   \x41\x42", "END",
};

TEST(Robustness, RandomSheetsDrawInEveryViewWithoutFault) {
    std::mt19937 rng(20240611);
    std::uniform_int_distribution<std::size_t> pick(0, std::size(kVocabulary) - 1);
    std::uniform_int_distribution<int> length(0, 400);
    for (int round = 0; round < 60; ++round) {
        core::ScoreSheet sheet = test::MakeSheet({round % 2 ? "DBSKN  F" : "       G",
                                                  round % 3 ? "TEMPO60" : "TEMPO-2",
                                                  round % 5 ? "RHYTM4/4" : "RHYTM0/0"},
                                                 false);
        const int n = length(rng);
        for (int k = 0; k < n; ++k) test::Repeat(sheet, kVocabulary[pick(rng)]);
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
