// Nothing drawn passes the staff end, and printed pages hold whole rows.

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "melody_builder.h"
#include "render/paged_layout.h"
#include "sheet_builder.h"

namespace tahrir::render::test {

namespace {

// The first drawing past the staff end, as text; empty when there is none.
std::string Overrun(const LayoutResult& r) {
    for (const DisplayItem& it : r.list.items) {
        if (it.kind == ItemKind::MeasureLabel || (it.line == 0 && it.kind == ItemKind::Text))
            continue;
        const double right = RightEdge(it);
        if (right > r.staffEnd + 1e-6)
            return "line " + std::to_string(it.line) + " (" + it.text + ") reaches " +
                   std::to_string(right) + " past " + std::to_string(r.staffEnd);
    }
    for (std::size_t i = 1; i < r.LineRight.size(); ++i)
        if (r.LineRight[i] > r.staffEnd + 1e-6) return "line right " + std::to_string(i);
    return {};
}

// A melody with signs, texts and forced breaks mixed in at random places.
core::ScoreSheet RandomSheet(unsigned seed) {
    core::ScoreSheet melody = tahrir::test::MakeMelody(12 + static_cast<int>(seed % 30), seed);
    static const char* const kExtras[] = {
        "L-text over", "L^Ms=3",   "L_under", "REP{",  "REP}",  "VOL{1",
        "ALL8U",       "TEMPO 90", "L  ",     "ALL4K", "REPS}", "L-\xcd\xd3\xc7\xe4\xed"};
    std::mt19937 rng(seed);
    core::ScoreSheet sheet = MakeSheet({"  K    G", "TEMPO72", "RHYTM4/4"}, false);
    for (int i = 4; i <= melody.LastLine && sheet.LastLine < core::MaxLines - 1; ++i) {
        if (rng() % 9 == 0) Repeat(sheet, kExtras[rng() % std::size(kExtras)]);
        Repeat(sheet, melody[i].text());
    }
    core::RhythmPass(sheet);
    return sheet;
}

} // namespace

TEST(StaffEnd, NoDrawingOfDemosMelodiesOrRandomSheetsPassesIt) {
    std::vector<std::pair<std::string, core::ScoreSheet>> sheets;
    for (const char* name : kDemoNames)
        sheets.emplace_back(name, DemoSheet(name));
    sheets.emplace_back("melody of 20", tahrir::test::MakeMelody(20, 7));
    for (unsigned seed = 1; seed <= 40; ++seed)
        sheets.emplace_back("random " + std::to_string(seed), RandomSheet(seed));
    for (const auto& [name, sheet] : sheets)
        for (double zoom : {1.0, 3.0, 6.0}) {
            LayoutOptions o;
            o.ZoomBase = zoom;
            const LayoutResult r = RefreshView(sheet, o);
            EXPECT_EQ(Overrun(r), "") << name << " at zoom " << zoom;
        }
}

TEST(Pages, WholeRowsOnEachPageWithNumbersAndTheTitleFirst) {
    LayoutOptions o;
    o.Description = "Title\nSecond";
    for (const Paper* paper : {&kA4, &kLetter}) {
        const PagedLayout paged =
            LayOutPages(tahrir::test::MakeMelody(200, 11), o, PageOptions{*paper});
        ASSERT_GE(paged.pages.size(), 4u);
        std::map<int, int> pageOfRow;
        int titles = 0;
        for (const PrintedPage& page : paged.pages) {
            int numbers = 0;
            for (const DisplayItem& it : page.list.items) {
                EXPECT_GE(TopEdge(it), -1e-6) << "page " << page.number;
                EXPECT_LE(BottomEdge(it), page.list.heightUnits + 1e-6) << "page " << page.number;
                EXPECT_LE(RightEdge(it), page.list.widthUnits + 1e-6);
                numbers += it.kind == ItemKind::Text && it.row == 0 &&
                           it.text == std::to_string(page.number);
                titles += it.text == "Title";
                if (it.row > 0) {
                    const auto [at, fresh] = pageOfRow.emplace(it.row, page.number);
                    EXPECT_EQ(at->second, page.number) << "row " << it.row << " split";
                }
            }
            EXPECT_EQ(numbers, 1) << "page " << page.number;
            EXPECT_LE(page.list.heightUnits * paged.layout.ZoomFactor * ScreenUnit / 1440 * 25.4,
                      paper->heightMm + 1e-6);
        }
        EXPECT_EQ(static_cast<int>(pageOfRow.size()), paged.layout.rows);
        EXPECT_EQ(titles, 1);
        EXPECT_NE(PaperNamed("LETTER"), nullptr);
        EXPECT_EQ(PaperNamed("a5"), nullptr);
    }
}

} // namespace tahrir::render::test
