// Layout decisions of the walk, checked on small sheets built in code.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <map>

#include "core/rhythm_pass.h"
#include "core/score_reader.h"

#include "render/page_layout.h"
#include "sheet_builder.h"

namespace tahrir::render {
namespace {

using test::MakeSheet;
using test::Repeat;

const std::string kHeader = "       G";

std::vector<const DisplayItem*> Find(const LayoutResult& r, ItemKind kind,
                                     const std::string& text = {}) {
    std::vector<const DisplayItem*> out;
    for (const auto& it : r.list.items)
        if (it.kind == kind && (text.empty() || it.text == text)) out.push_back(&it);
    return out;
}

const DisplayItem* GlyphOfLine(const LayoutResult& r, int line) {
    for (const auto& it : r.list.items)
        if (it.kind == ItemKind::Glyph && it.line == line) return &it;
    return nullptr;
}

LayoutResult Lay(const core::ScoreSheet& sheet, double width = 60, int view = 0) {
    LayoutOptions o;
    o.PageWidthUnits = width;
    o.ViewMode = view;
    return RefreshView(sheet, o);
}

TEST(RowScale, BandsKeepShortRowsFromSpreading) {
    EXPECT_NEAR(RowScaleFor(0.4), 1 / (0.4 * 1.9), 1e-9); // about 1.32, not 2.5
    EXPECT_NEAR(RowScaleFor(0.55), 1 / (0.55 * 1.5), 1e-9);
    EXPECT_NEAR(RowScaleFor(0.8), 1.25, 1e-9);
    EXPECT_NEAR(RowScaleFor(1.25), 0.8, 1e-9); // an over-full row is drawn narrower
    EXPECT_EQ(RowScaleFor(2.0), 1);
    EXPECT_EQ(RowScaleFor(0.3), 1);
    EXPECT_EQ(RowScaleFor(0), 1);
}

TEST(Notes, StemDirectionAndHeadHeightFollowThePosition) {
    // Si of octave 3 stands on the middle line (position 4), Do of octave 4 above it.
    const auto r = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73  8", "14  8"}));
    const DisplayItem* middle = GlyphOfLine(r, 4);
    const DisplayItem* above = GlyphOfLine(r, 5);
    ASSERT_TRUE(middle && above);
    EXPECT_EQ(middle->text, "q");
    EXPECT_EQ(above->text, "Q");
    // The head of the middle line: 2 units above the bottom line, less the font offset.
    EXPECT_NEAR(middle->y, 26 - 2 - 5.55, 1e-9);
    EXPECT_NEAR(above->y, 26 - 2.5 - 5.55, 1e-9);
    EXPECT_DOUBLE_EQ(r.positions.LinePosX[4], middle->x);
    EXPECT_DOUBLE_EQ(r.positions.LinePosY[4], 26);
}

TEST(Notes, StemsInDxfByDuration) {
    const auto lines = [](const std::string& note) {
        LayoutOptions o;
        o.PageWidthUnits = 60;
        o.DxfEnabled = true;
        const auto bar = note.find('|');
        auto sheet = MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", note.substr(0, bar)});
        if (bar + 1 < note.size()) Repeat(sheet, note.substr(bar + 1), 1);
        const auto r = RefreshView(sheet, o);
        std::size_t n = 0;
        for (auto p = r.dxf.find("LINE\r\n"); p != std::string::npos; p = r.dxf.find("LINE\r\n", p + 1))
            if (p == 0 || r.dxf[p - 1] == '\n') ++n; // not the tail of "POLYLINE"
        return n;
    };
    // The half note adds its stem; the whole note has none.
    // Each sheet fills its measure (a rest makes up the rest) so the barlines are alike.
    EXPECT_EQ(lines("13 16|03 16") - lines("13 32|"), 1u);
    EXPECT_EQ(lines("13  8|03 24") - lines("13 32|"), 1u);
}

TEST(Notes, UnknownDurationDrawsNothingAndTakesNoTime) {
    const auto r = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73 10", "73 16", "73 16"}));
    EXPECT_EQ(GlyphOfLine(r, 4), nullptr);
    EXPECT_EQ(r.positions.LinePosX[4], -1);
    // Only the two halves fill the measure: it ends at line 6, not over-full.
    const auto red = std::count_if(r.list.items.begin(), r.list.items.end(), [](auto& it) {
        return it.kind == ItemKind::Stroke && it.colour == kRed;
    });
    EXPECT_EQ(red, 0);
    EXPECT_EQ(Find(r, ItemKind::Glyph, "[").size(), 1u);
}

TEST(Measures, OverFullBarlineIsRedAndExactOneBlack) {
    const auto strokesOf = [](const LayoutResult& r, std::uint32_t colour) {
        return std::count_if(r.list.items.begin(), r.list.items.end(), [&](auto& it) {
            return it.kind == ItemKind::Stroke && it.colour == colour && it.x == it.x2 &&
                   std::abs(it.y - it.y2) == 4;
        });
    };
    const auto over = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73 16", "73 24", "73 32"}));
    EXPECT_EQ(strokesOf(over, kRed), 1);
    const auto exact = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73 16", "73 16", "73 32"}));
    EXPECT_EQ(strokesOf(exact, kRed), 0);
}

TEST(Measures, NumbersStandOverBarlinesAndMoveToRowStarts) {
    core::ScoreSheet sheet = MakeSheet({kHeader, "TEMPO60", "RHYTM4/4"});
    Repeat(sheet, "73 32", 8);
    const auto r = Lay(sheet, 40);
    ASSERT_GE(r.rows, 2);
    ASSERT_GE(r.measures.size(), 9u);
    EXPECT_TRUE(r.measures[1].visible);
    EXPECT_NEAR(r.measures[1].y, 26 - 6.5, 1e-9);
    // The label of the measure that opens row 2 stands at that row's start, not at the
    // barline: x = RowStartX + 3 (clef at 3 + 1, advance 3, less 2), y of the new row.
    const auto rowStart = std::find_if(r.measures.begin() + 2, r.measures.end(),
                                       [](const MeasureLabel& m) { return m.y > 30; });
    ASSERT_NE(rowStart, r.measures.end());
    EXPECT_NEAR(rowStart->y, 26 + 14 - 6.5, 1e-9);
    EXPECT_GE(rowStart->x, 5 + 3 * 0.5);
    EXPECT_LE(rowStart->x, 5 + 3 * 2.0);
    // The barline after the last line carries a number that is never shown.
    EXPECT_FALSE(r.measures[9].visible);
}

TEST(Signs, RepeatStartIsAHitTarget) {
    const auto r = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "REP{", "73 32"}));
    // The sign stands 2.2 before the pen, which it then moves on by 2 (times the stretch).
    EXPECT_GT(r.positions.LinePosX[4], 0);
    EXPECT_EQ(r.positions.LinePosY[4], 26);
    EXPECT_GT(r.positions.LinePosX[5], r.positions.LinePosX[4] + 2 - 1e-9);
}

TEST(Rows, SpacerLineForcesARowBreak) {
    const auto together = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73 32", "73 32"}));
    const auto split = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73 32", "L  ", "73 32"}));
    EXPECT_EQ(together.positions.LinePosY[5], 26);
    EXPECT_EQ(split.positions.LinePosY[6], 26 + 14);
}

TEST(Rows, LastBarlineIsFinalAndInsideThePage) {
    const auto r = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73 32"}), 60);
    const auto finals = Find(r, ItemKind::Glyph, "[");
    ASSERT_EQ(finals.size(), 1u);
    EXPECT_LE(finals[0]->x, 60 - 0.9 + 0.3 + 1e-9);
}

TEST(Rows, TwoHundredRowsAndMoreDoNotOverrun) {
    core::ScoreSheet sheet = MakeSheet({kHeader, "TEMPO60", "RHYTM4/4"});
    Repeat(sheet, "73 32", core::MaxLines - 3);
    const auto r = Lay(sheet, 20);
    EXPECT_GT(r.rows, 200);
    EXPECT_GE(static_cast<int>(r.RowRatios.size()), r.rows);
    EXPECT_GT(r.positions.LinePosY[core::MaxLines], 26 + 200 * 14);
}

// The right end of each row's last barline, row by row from the top.
std::vector<double> RowEnds(const LayoutResult& r) {
    std::map<double, double> ends; // staff base y -> rightmost barline
    for (const auto& it : r.list.items)
        if (it.kind == ItemKind::Stroke && it.x == it.x2 && std::abs(it.y2 - it.y - 4) < 1e-9)
            ends[it.y2] = std::max(ends[it.y2], it.x);
    std::vector<double> out;
    for (const auto& [y, x] : ends) out.push_back(x);
    return out;
}

TEST(Rows, DrawingPassBreaksWhereTheMeasuringPassDid) {
    // The fixed row head (clef, key) is not stretched, so the drawing pass's own test,
    // divided by the stretch, would end a compressed row a measure early and leave a
    // stretched row to run past the page. Every row but the last must be justified.
    for (const char* name : {"dashti-tasnif", "chahargah-chaharmezrab", "shur-daramad",
                             "esfahan-reng"}) {
        std::ifstream in(std::string(TAHRIR_DATA_DIR) + "/demo/" + name + ".srv",
                         std::ios::binary);
        ASSERT_TRUE(in) << name;
        const std::string bytes((std::istreambuf_iterator<char>(in)), {});
        core::Document doc;
        ASSERT_TRUE(core::ParseScore(bytes, false, doc).loaded()) << name;
        core::RhythmPass(doc.Sheet);
        const auto r = Lay(doc.Sheet, 75);
        const std::vector<double> ends = RowEnds(r);
        ASSERT_EQ(static_cast<int>(ends.size()), r.rows) << name;
        for (std::size_t row = 0; row + 1 < ends.size(); ++row)
            EXPECT_GE(ends[row], 0.9 * 75) << name << " row " << row + 1;
    }
}

TEST(WorkingView, RowsEndAtNinetyPercent) {
    core::ScoreSheet sheet = MakeSheet({kHeader, "TEMPO60", "RHYTM4/4"});
    Repeat(sheet, "73  8", 64);
    const auto page = Lay(sheet, 60, 0);
    const auto work = Lay(sheet, 60, 1);
    EXPECT_GT(work.rows, page.rows);
    double maxX = 0;
    for (int i = 4; i <= sheet.LastLine; ++i) maxX = std::max(maxX, work.positions.LinePosX[i]);
    EXPECT_LT(maxX, 60 * 0.9);
    EXPECT_GT(maxX, 60 * 0.7);
}

TEST(ControlLines, ValidValuesTakeEffectAndOthersAreIgnored) {
    const auto textSize = [](const std::string& control) {
        const auto r = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", control, "L_word"}));
        const auto texts = Find(r, ItemKind::Text, "word");
        return texts.empty() ? -1.0 : texts[0]->size;
    };
    EXPECT_DOUBLE_EQ(textSize("LCTFS=2"), 1.0);
    EXPECT_DOUBLE_EQ(textSize("LCTFS=5"), 0.5);
    EXPECT_DOUBLE_EQ(textSize("Lctfs=2"), 1.0); // the keyword folds to upper case

    const auto firstStaffY = [](const std::string& control) {
        const auto r = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", control, "73 32"}));
        return r.positions.LinePosY[5];
    };
    EXPECT_EQ(firstStaffY("LCTOP=40"), 40); // read in the first pass, used by the second
    EXPECT_EQ(firstStaffY("LCTOP=0"), 26);
    EXPECT_EQ(firstStaffY("LCTOP=101"), 26);

    const auto r = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "LCDBL=20", "73 32", "L  ",
                                  "73 32"}));
    EXPECT_EQ(r.positions.LinePosY[7], 26 + 20);
    // Control lines take no room and draw nothing in page view.
    EXPECT_EQ(r.positions.LinePosX[4], -1);

    // A left margin is a percentage of the picture: 10 of a page of 56 + 4 units is 6,
    // where the staff lines of the next row begin.
    const auto left = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "LCLFT=10", "73 32",
                                     "L  ", "73 32"}),
                          56);
    const auto staves = Find(left, ItemKind::Stroke);
    const bool found = std::any_of(staves.begin(), staves.end(), [](const DisplayItem* it) {
        return it->y == it->y2 && it->y == 26 + 14 && std::abs(it->x - 6) < 1e-9;
    });
    EXPECT_TRUE(found);
}

TEST(Signs, KeySignatureUsesSoriAndKoronGlyphs) {
    // Fa with sori and Si with koron: Fa at octave 4 (top line), Si at octave 3 (middle).
    const auto r = Lay(MakeSheet({"   S  KG", "TEMPO60", "RHYTM4/4", "73 32"}));
    const auto sori = Find(r, ItemKind::Glyph, "<");
    const auto koron = Find(r, ItemKind::Glyph, "!");
    ASSERT_FALSE(sori.empty());
    ASSERT_FALSE(koron.empty());
    EXPECT_NEAR(sori[0]->y, 26 - 4 - 5.5, 1e-9);
    EXPECT_NEAR(koron[0]->y, 26 - 2 - 5.5, 1e-9);
    EXPECT_LT(sori[0]->x, koron[0]->x);
}

TEST(Signs, TieIsAFixedArcAfterTheNote) {
    const auto r = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73  8  TI", "73  8"}));
    const auto arcs = Find(r, ItemKind::Arc);
    ASSERT_EQ(arcs.size(), 1u);
    EXPECT_DOUBLE_EQ(arcs[0]->x2, 4.7);
    // Stem up, position sum 28: the centre follows the mark's y (26 - 10.55 - 2) plus 8.
    EXPECT_NEAR(arcs[0]->y, 26 - 10.55 - 2 + 8, 1e-9);
    EXPECT_NEAR(arcs[0]->x, r.positions.LinePosX[4] - 1.2 + 3.6, 1e-9);
    EXPECT_DOUBLE_EQ(arcs[0]->a0, 4.2);
    // The arc takes the pen back 1.2 and returns 1: the next note stands 0.2 closer. The
    // working view draws at scale 1, so a quarter's advance of 4 becomes 3.8.
    const auto work = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73  8  TI", "73  8"}), 60, 1);
    EXPECT_NEAR(work.positions.LinePosX[5] - work.positions.LinePosX[4], 3.8, 1e-9);
}

TEST(Beams, SecondLevelPartsStayOnTheSecondLevel) {
    // Kinds 24 (a 16th closing "4"), 26 (an eighth closing "0") and 32 (a 32nd closing
    // "2") draw "full and left stub", "left stub, twice" and "full and right stub", all on
    // the second beam, 0.75 from the main one: none of them reaches the third level.
    for (const char* last : {"73  2 4", "73  4 0", "73  1 2"}) {
        core::ScoreSheet sheet = MakeSheet({kHeader, "TEMPO60", "RHYTM4/4"}, false);
        std::string first = last;
        first[6] = 'C';
        Repeat(sheet, first, 1);
        Repeat(sheet, last, 1);
        const auto r = Lay(sheet);
        std::vector<double> ys;
        for (const auto& it : r.list.items)
            if (it.kind == ItemKind::Stroke && it.width == WidthClass::Beam) ys.push_back(it.y);
        ASSERT_EQ(ys.size(), 3u) << last;
        // Same pitch throughout: the main beam is level, the first stroke drawn.
        for (double y : ys) {
            const double off = std::abs(y - ys[0]);
            EXPECT_TRUE(off < 1e-9 || std::abs(off - 0.75) < 1e-9) << last << " at " << off;
        }
    }
}

TEST(Dxf, FlagsOnlyOnNotesThatStandAlone) {
    const auto flags = [](const core::ScoreSheet& sheet) {
        LayoutOptions o;
        o.PageWidthUnits = 60;
        o.DxfEnabled = true;
        const std::string dxf = RefreshView(sheet, o).dxf;
        int n = 0;
        for (auto at = dxf.find("  1\r\nb\r\n"); at != std::string::npos;
             at = dxf.find("  1\r\nb\r\n", at + 1))
            ++n;
        return n;
    };
    EXPECT_EQ(flags(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73  4", "03  8"})), 1);
    EXPECT_EQ(flags(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73  2", "03  8"})), 2);
    // Two eighths under one beam: heads and stems, and the beam as a polyline.
    EXPECT_EQ(flags(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73  4 C", "73  4 c"}, false)), 0);
}

TEST(Dxf, MarksAreTheirFirstLetterAtTheirHeight) {
    LayoutOptions o;
    o.PageWidthUnits = 60;
    o.DxfEnabled = true;
    const std::string dxf =
        RefreshView(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73  8  7 ", "73  8  8 ",
                               "73  8  AC", "73  8  TR"}),
                    o)
            .dxf;
    // Plectrum strokes at 0.8, the accent and the trill at 1.2, all on the finger layer.
    EXPECT_NE(dxf.find(" 40\r\n0.8\r\n  1\r\n7\r\n"), std::string::npos);
    EXPECT_NE(dxf.find(" 40\r\n0.8\r\n  1\r\n8\r\n"), std::string::npos);
    EXPECT_NE(dxf.find(" 40\r\n1.2\r\n  1\r\nA\r\n"), std::string::npos);
    EXPECT_NE(dxf.find(" 40\r\n1.2\r\n  1\r\nT\r\n"), std::string::npos);
    EXPECT_EQ(dxf.find(" 40\r\n1.2\r\n  1\r\n7\r\n"), std::string::npos);
}

TEST(WorkingView, DotsOfCaptions) {
    // A dotted quarter reads "q .", a dotted eighth "e.": the flag glyph needs no blank.
    const auto r = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73 12", "73  6", "03  2"}),
                       60, 1);
    ASSERT_NE(GlyphOfLine(r, 4), nullptr);
    ASSERT_NE(GlyphOfLine(r, 5), nullptr);
    EXPECT_EQ(GlyphOfLine(r, 4)->text, "q .");
    EXPECT_EQ(GlyphOfLine(r, 5)->text, "e.");
}

TEST(Beams, StemsEndOnTheBeamOfTheirGroup) {
    const auto r = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73  4", "13  4", "73  4",
                                  "13  4", "73 16"}));
    std::vector<const DisplayItem*> stems, beams;
    for (const auto& it : r.list.items) {
        if (it.kind != ItemKind::Stroke) continue;
        if (it.width == WidthClass::Stem) stems.push_back(&it);
        if (it.width == WidthClass::Beam) beams.push_back(&it);
    }
    ASSERT_EQ(stems.size(), 4u);
    ASSERT_GE(beams.size(), 2u);
    for (const DisplayItem* s : stems) {
        const bool meets = std::any_of(beams.begin(), beams.end(), [&](const DisplayItem* b) {
            return (std::abs(b->x - s->x) < 0.05 && std::abs(b->y - s->y) < 1e-9) ||
                   (std::abs(b->x2 - s->x) < 0.05 && std::abs(b->y2 - s->y) < 1e-9);
        });
        EXPECT_TRUE(meets) << "stem at " << s->x;
    }
}

TEST(Beams, LongGroupsAndStrayCodesDrawWithoutFault) {
    // Beam codes as a damaged file could leave them: fifteen "C" in a row, then kinds the
    // tables lack. Every member still gets its stem.
    core::ScoreSheet sheet = MakeSheet({kHeader, "TEMPO60", "RHYTM32/4"}, false);
    Repeat(sheet, "73  2 C", 15);
    Repeat(sheet, "73  2 2", 1);
    Repeat(sheet, "73  4 9", 1);
    Repeat(sheet, "73  1 7", 1);
    const auto r = Lay(sheet);
    const auto stems = std::count_if(r.list.items.begin(), r.list.items.end(), [](auto& it) {
        return it.kind == ItemKind::Stroke && it.width == WidthClass::Stem;
    });
    EXPECT_EQ(stems, 18);
}

TEST(Dxf, StreamOnlyWhenEnabled) {
    const auto sheet = MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73 32"});
    LayoutOptions o;
    EXPECT_TRUE(RefreshView(sheet, o).dxf.empty());
    o.DxfEnabled = true;
    const std::string dxf = RefreshView(sheet, o).dxf;
    EXPECT_EQ(dxf.rfind(" 0 \r\nSECTION\r\n", 0), 0u);
    EXPECT_TRUE(dxf.ends_with("  0\r\nENDSEC\r\n 0 \r\nEOF\r\n"));
    // Only the last pass is kept: one title.
    EXPECT_EQ(dxf.find("ITALICC"), dxf.rfind("ITALICC"));
}

} // namespace
} // namespace tahrir::render

namespace tahrir::render {
namespace {

TEST(Page, DescriptionLinesAreCentredAboveTheStaves) {
    LayoutOptions o;
    o.PageWidthUnits = 60;
    o.Description = "\xCF\xD1\xC2\xE3\xCF\r\nDaramad\r\n";
    const auto r = RefreshView(test::MakeSheet({"       G", "TEMPO60", "RHYTM4/4", "73 32"}), o);
    std::vector<const DisplayItem*> titles;
    for (const auto& it : r.list.items)
        if (it.kind == ItemKind::Text && it.centred) titles.push_back(&it);
    ASSERT_EQ(titles.size(), 2u);
    EXPECT_EQ(titles[0]->text, "\xD8\xAF\xD8\xB1\xD8\xA2\xD9\x85\xD8\xAF"); // shown as Unicode
    EXPECT_EQ(titles[1]->text, "Daramad");
    EXPECT_DOUBLE_EQ(titles[0]->x, (60 + 4) / 2.0);
    EXPECT_LT(titles[1]->y, 26 - 4 - titles[1]->size * 4); // above the first staff
}

} // namespace
} // namespace tahrir::render

namespace tahrir::render {
namespace {

TEST(Signs, ChordSymbolsSpellRootAndKind) {
    const auto chordOf = [](const std::string& codes) {
        LayoutOptions o;
        o.PageWidthUnits = 60;
        const auto r = RefreshView(test::MakeSheet({"       G", "TEMPO60", "RHYTM4/4",
                                                    "73  8    " + codes}),
                                   o);
        for (const auto& it : r.list.items)
            if (it.kind == ItemKind::Text && it.line == 4) return it.text;
        return std::string("none");
    };
    EXPECT_EQ(chordOf("CA"), "D M");       // code 67: sharp spelling, index 2
    EXPECT_EQ(chordOf("BJ"), "C# m7");     // kind "J": index 9
    EXPECT_EQ(chordOf("OC"), "Db aug");    // from code 78 the flat spelling
    EXPECT_EQ(chordOf("AA"), " ");         // a root code of 65 or 77 gives a blank
    EXPECT_EQ(chordOf("MA"), " ");
    EXPECT_EQ(chordOf("C "), "none");      // no kind: no chord
}

} // namespace
} // namespace tahrir::render

namespace tahrir::render {
namespace {

TEST(Beams, CodeSevenOnAnEighthClosesTwoGroupsInOneStep) {
    // "C", "C", "7": the third note ends the group, then stands alone in two more groups of
    // one member each, so it gets three stems of its own and no second beam.
    core::ScoreSheet sheet = test::MakeSheet({"       G", "TEMPO60", "RHYTM4/4"}, false);
    test::Repeat(sheet, "73  4 C", 2);
    test::Repeat(sheet, "73  4 7", 1);
    LayoutOptions o;
    o.PageWidthUnits = 60;
    const auto r = RefreshView(sheet, o);
    int stems = 0, beams = 0;
    for (const auto& it : r.list.items) {
        if (it.kind != ItemKind::Stroke) continue;
        stems += it.width == WidthClass::Stem;
        beams += it.width == WidthClass::Beam;
    }
    EXPECT_EQ(stems, 5);
    // Two main beams and, for kind 26 of the third note, the left stub twice.
    EXPECT_EQ(beams, 4);
}

TEST(Text, MeasureLabelLinesShowOnlyInWorkingView) {
    const auto sheet = test::MakeSheet({"       G", "TEMPO60", "RHYTM4/4", "L^Ms=1", "73 32"});
    for (int view : {0, 1}) {
        LayoutOptions o;
        o.ViewMode = view;
        o.PageWidthUnits = 60;
        const auto r = RefreshView(sheet, o);
        const bool shown = std::any_of(r.list.items.begin(), r.list.items.end(), [](auto& it) {
            return it.kind == ItemKind::Text && it.text == "Ms=1";
        });
        EXPECT_EQ(shown, view == 1) << "view " << view;
        EXPECT_EQ(r.positions.LinePosX[4] != -1, view == 1) << "view " << view;
    }
}

TEST(Signs, RepeatEndAtARowEndStaysOnTheOldRow) {
    core::ScoreSheet sheet = test::MakeSheet({"       G", "TEMPO60", "RHYTM4/4", "73 32", "REP}",
                                              "L  ", "73 32", "73 32"});
    LayoutOptions o;
    o.PageWidthUnits = 60;
    const auto r = RefreshView(sheet, o);
    const auto ends = std::count_if(r.list.items.begin(), r.list.items.end(), [](auto& it) {
        return it.kind == ItemKind::Glyph && it.text == "}";
    });
    // "REP}" followed by a spacer draws no sign of its own but breaks the row.
    EXPECT_EQ(ends, 0);
    EXPECT_EQ(r.positions.LinePosY[7], 26 + 14);

    sheet = test::MakeSheet({"       G", "TEMPO60", "RHYTM4/4", "73 32", "REP}", "L^x",
                             "73 32"});
    const auto r2 = RefreshView(sheet, o);
    std::vector<double> ys;
    for (const auto& it : r2.list.items)
        if (it.kind == ItemKind::Glyph && it.text == "}") ys.push_back(it.y);
    ASSERT_EQ(ys.size(), 1u);
    EXPECT_DOUBLE_EQ(ys[0], 26 - 5.5);
}

TEST(Signs, RepeatEndTakesThePenBackBeforeTheRowDecision) {
    // The sign moves the pen 1.2 back from the barline: the number of the next measure
    // stands over the sign, and the pen is given back when the row goes on.
    const auto r = Lay(MakeSheet({kHeader, "TEMPO60", "RHYTM4/4", "73 32", "REP}", "L^x",
                                  "73 32", "73 32"}),
                       80);
    const DisplayItem* sign = nullptr;
    double barline = 0;
    for (const auto& it : r.list.items) {
        if (it.kind == ItemKind::Glyph && it.text == "}") sign = &it;
        if (it.kind == ItemKind::Stroke && it.x == it.x2 && barline == 0 && it.y2 - it.y == 4)
            barline = it.x;
    }
    ASSERT_NE(sign, nullptr);
    EXPECT_NEAR(sign->x, barline - 1.2, 1e-9);
    EXPECT_NEAR(r.measures[2].x, barline - 1.2, 1e-9);
    EXPECT_TRUE(r.measures[2].visible);
    // Both measures share the row, the second after the full advance from the barline.
    EXPECT_EQ(r.positions.LinePosY[8], 26);
    EXPECT_GT(r.positions.LinePosX[8], barline);
}

} // namespace
} // namespace tahrir::render

namespace tahrir::render {
namespace {

TEST(Measures, ARepeatSignMovesTheLabelOfItsNumber) {
    // The one-measure repeat draws its barline with number 0, which is label 1: the label
    // of the first measure moves there rather than a second "1" appearing.
    LayoutOptions o;
    o.PageWidthUnits = 80;
    const auto r = RefreshView(test::MakeSheet({"       G", "TEMPO60", "RHYTM4/4", "73 32",
                                                "REPB1", "73 32"}),
                               o);
    std::vector<const DisplayItem*> ones;
    for (const auto& it : r.list.items)
        if (it.kind == ItemKind::MeasureLabel && it.text == "1") ones.push_back(&it);
    ASSERT_EQ(ones.size(), 1u);
    EXPECT_GT(ones[0]->x, r.positions.LinePosX[4]);
    EXPECT_DOUBLE_EQ(ones[0]->x, r.measures[1].x);
}

} // namespace
} // namespace tahrir::render
