// Layout decisions of the walk, checked on small sheets built in code.

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "sheet_builder.h"

namespace tahrir::render {
namespace {

using namespace test;

bool IsBarline(const DisplayItem& it) {
    return it.kind == ItemKind::Stroke && it.width == WidthClass::Normal && it.x == it.x2 &&
           std::abs(it.y2 - it.y - 4) < 1e-9;
}

TEST(Notes, UnknownDurationDrawsNothingAndTakesNoTime) {
    const auto r = Lay(Body({"73 10", "73 16", "73 16"}));
    EXPECT_EQ(GlyphOfLine(r, 4), nullptr);
    EXPECT_EQ(r.positions.LinePosX[4], -1);
    // Only the two halves fill the measure: not over-full, one final barline.
    EXPECT_EQ(Count(r, [](auto& it) { return it.kind == ItemKind::Stroke && it.colour == kRed; }),
              0);
    EXPECT_EQ(Find(r, ItemKind::Glyph, "[").size(), 1u);
}

TEST(Measures, ARepeatSignMovesTheLabelOfItsNumber) {
    // The one-measure repeat draws its barline with number 0, which is label 1: the label
    // of the first measure moves there rather than a second "1" appearing.
    const auto r = Lay(Body({"73 32", "REPB1", "73 32"}), 80);
    const auto ones = Find(r, ItemKind::MeasureLabel, "1");
    ASSERT_EQ(ones.size(), 1u);
    EXPECT_GT(ones[0]->x, r.positions.LinePosX[4]);
    EXPECT_DOUBLE_EQ(ones[0]->x, r.measures[1].x);
}

TEST(Rows, TwoHundredRowsAndMoreDoNotOverrun) {
    core::ScoreSheet sheet = Body({});
    Repeat(sheet, "73 32", core::MaxLines - 3);
    const auto r = Lay(sheet, 20);
    EXPECT_GT(r.rows, 200);
    EXPECT_GE(static_cast<int>(r.RowRatios.size()), r.rows);
    EXPECT_GT(r.positions.LinePosY[core::MaxLines], 26 + 200 * 14);
}

TEST(Rows, DrawingPassBreaksWhereTheMeasuringPassDid) {
    // The fixed row head (clef, key) is not stretched, so the drawing pass's own test,
    // divided by the stretch, would end a compressed row a measure early and leave a
    // stretched row to run past the page. Every row but the last must be justified.
    for (const char* name : kDemoNames) {
        const core::ScoreSheet sheet = DemoSheet(name);
        ASSERT_GT(sheet.LastLine, 3) << name;
        const auto r = Lay(sheet, 75);
        std::map<double, double> ends; // staff base y -> rightmost barline
        for (const auto& it : r.list.items)
            if (IsBarline(it)) ends[it.y2] = std::max(ends[it.y2], it.x);
        ASSERT_EQ(static_cast<int>(ends.size()), r.rows) << name;
        int row = 0;
        for (const auto& [y, x] : ends)
            if (++row < r.rows) {
                EXPECT_GE(x, 0.9 * 75) << name << " row " << row;
            }
    }
}

TEST(Text, MeasureLabelLinesHaveAPlaceOnlyInWorkingView) {
    const auto sheet = Body({"L^Ms=1", "73 32"});
    EXPECT_EQ(Lay(sheet, 60, View::Page).positions.LinePosX[4], -1);
    EXPECT_NE(Lay(sheet, 60, View::Working).positions.LinePosX[4], -1);
}

TEST(Page, DescriptionLinesAreCentredAboveTheStaves) {
    LayoutOptions o;
    o.PageWidthUnits = 60;
    o.Description = "\xCF\xD1\xC2\xE3\xCF\r\nDaramad\r\n";
    const auto r = RefreshView(Body({"73 32"}), o);
    std::vector<const DisplayItem*> titles;
    for (const auto& it : r.list.items)
        if (it.kind == ItemKind::Text && it.centred) titles.push_back(&it);
    ASSERT_EQ(titles.size(), 2u);
    EXPECT_EQ(titles[0]->text, "\xD8\xAF\xD8\xB1\xD8\xA2\xD9\x85\xD8\xAF"); // shown as Unicode
    EXPECT_EQ(titles[1]->text, "Daramad");
    EXPECT_DOUBLE_EQ(titles[0]->x, (60 + 4) / 2.0);
    EXPECT_LT(titles[1]->y, 26 - 4 - titles[1]->size * 4); // above the first staff
}

TEST(Signs, RepeatStartIsAHitTargetAndRepeatEndAtARowEndStaysOnTheOldRow) {
    // The start sign stands before the pen, which it then moves on by 2 (times the stretch).
    auto r = Lay(Body({"REP{", "73 32"}));
    EXPECT_GT(r.positions.LinePosX[4], 0);
    EXPECT_EQ(r.positions.LinePosY[4], 26);
    EXPECT_GT(r.positions.LinePosX[5], r.positions.LinePosX[4] + 2 - 1e-9);

    // "REP}" followed by a spacer draws no sign of its own but breaks the row.
    r = Lay(Body({"73 32", "REP}", "L  ", "73 32", "73 32"}));
    EXPECT_TRUE(Find(r, ItemKind::Glyph, "}").empty());
    EXPECT_EQ(r.positions.LinePosY[7], 26 + 14);

    r = Lay(Body({"73 32", "REP}", "L^x", "73 32"}));
    const auto signs = Find(r, ItemKind::Glyph, "}");
    ASSERT_EQ(signs.size(), 1u);
    EXPECT_DOUBLE_EQ(signs[0]->y, 26 - 5.5);
}

TEST(Signs, RepeatEndTakesThePenBackBeforeTheRowDecision) {
    // The sign moves the pen 1.2 back from the barline: the number of the next measure
    // stands over the sign, and the pen is given back when the row goes on.
    const auto r = Lay(Body({"73 32", "REP}", "L^x", "73 32", "73 32"}), 80);
    const auto signs = Find(r, ItemKind::Glyph, "}");
    const auto bar = std::find_if(r.list.items.begin(), r.list.items.end(), IsBarline);
    ASSERT_EQ(signs.size(), 1u);
    ASSERT_NE(bar, r.list.items.end());
    EXPECT_NEAR(signs[0]->x, bar->x - 1.2, 1e-9);
    EXPECT_NEAR(r.measures[2].x, bar->x - 1.2, 1e-9);
    EXPECT_TRUE(r.measures[2].visible);
    // Both measures share the row, the second after the full advance from the barline.
    EXPECT_EQ(r.positions.LinePosY[8], 26);
    EXPECT_GT(r.positions.LinePosX[8], bar->x);
}

TEST(Beams, StraightWithStemsEndingOnTheirOwnBeamAndSlopeLimited) {
    // Alternating, rising and falling groups, and two groups side by side: every stem meets
    // a straight beam of its own group and is no shorter than a stem of its own; a beam
    // rises at most a staff unit.
    for (const auto& body : {std::initializer_list<std::string>{"13  2", "63  2", "13  2", "63  2"},
                             {"13  2", "33  2", "53  2", "24  2"},
                             {"24  2", "73  2", "24  2", "73  2"},
                             {"73  4", "13  4", "73  4", "13  4", "73 16"}}) {
        const auto r = Lay(Body(body));
        std::vector<const DisplayItem*> stems, beams;
        for (const auto& it : r.list.items) {
            if (it.kind != ItemKind::Stroke) continue;
            if (it.width == WidthClass::Stem) stems.push_back(&it);
            if (it.width == WidthClass::Beam) beams.push_back(&it);
        }
        ASSERT_EQ(stems.size(), 4u);
        ASSERT_FALSE(beams.empty());
        for (const DisplayItem* b : beams)
            EXPECT_LE(std::abs(b->y2 - b->y), 1.0 + 1e-9);
        for (const DisplayItem* s : stems) {
            // The beam starts 0.02 right of an up stem (0.04 of a down one).
            const bool meets = std::any_of(beams.begin(), beams.end(), [&](const DisplayItem* b) {
                const double t = (s->x + 0.02 - b->x) / (b->x2 - b->x);
                return t > -0.05 && t < 1.05 && std::abs(s->y - (b->y + t * (b->y2 - b->y))) < 0.02;
            });
            EXPECT_TRUE(meets) << "stem at " << s->x;
            EXPECT_GE(std::abs(s->y2 - s->y), 3.2 - 1e-9);
        }
    }
}

TEST(Beams, StrayCodesKeepTheirStems) {
    // Codes a damaged file could leave: fifteen "C" in a row, then codes of other shapes.
    core::ScoreSheet sheet = MakeSheet({"       G", "TEMPO60", "RHYTM32/4"}, false);
    Repeat(sheet, "73  2 C", 15);
    for (const char* stray : {"73  2 2", "73  4 9", "73  1 7"})
        Repeat(sheet, stray);
    EXPECT_EQ(Strokes(Lay(sheet), WidthClass::Stem), 16);
}

TEST(Dxf, NoStreamUnlessEnabledAndMarksAreTheirFirstLetterAtTheirHeight) {
    const LayoutResult off = Lay(Body({"73 32"}));
    EXPECT_TRUE(off.dxf.empty());
    EXPECT_TRUE(off.list.dxf.entities.empty());
    const std::string dxf =
        Lay(Body({"73  8  7 ", "73  8  8 ", "73  8  AC", "73  8  TR"}), 60, View::Page, true).dxf;
    // Plectrum strokes at 0.8, the accent and the trill at 1.2, all on the finger layer.
    for (const char* mark :
         {"0.8\r\n  1\r\n7", "0.8\r\n  1\r\n8", "1.2\r\n  1\r\nA", "1.2\r\n  1\r\nT"})
        EXPECT_NE(dxf.find(std::string(" 40\r\n") + mark + "\r\n"), std::string::npos) << mark;
    EXPECT_EQ(dxf.find(" 40\r\n1.2\r\n  1\r\n7\r\n"), std::string::npos);
}

} // namespace
} // namespace tahrir::render
