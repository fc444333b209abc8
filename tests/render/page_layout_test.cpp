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

// The golden dump shows the two lines centred at (60 + 4) / 2, the Persian one as Unicode,
// both above the first staff.
TEST(Page, DescriptionLinesAreCentredAboveTheStaves) {
    ExpectGoldenLayout("description", Body({"73 32"}), 60, View::Page, false,
                       "\xCF\xD1\xC2\xE3\xCF\r\nDaramad\r\n");
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

TEST(Dxf, NoStreamUnlessEnabled) {
    const LayoutResult off = Lay(Body({"73 32"}));
    EXPECT_TRUE(off.dxf.empty());
    EXPECT_TRUE(off.list.dxf.entities.empty());
}

} // namespace
} // namespace tahrir::render
