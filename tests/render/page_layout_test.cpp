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

TEST(Dxf, NoStreamUnlessEnabled) {
    const LayoutResult off = Lay(Body({"73 32"}));
    EXPECT_TRUE(off.dxf.empty());
    EXPECT_TRUE(off.list.dxf.entities.empty());
}

} // namespace
} // namespace tahrir::render
