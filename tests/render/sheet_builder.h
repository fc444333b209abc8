#pragma once
// Sheets built line by line for the render tests, and queries on their layouts.

#include <algorithm>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "core/rhythm_pass.h"
#include "core/score_reader.h"
#include "core/score_sheet.h"
#include "golden_text.h"
#include "render/page_layout.h"

namespace tahrir::render::test {

// Appends `count` copies of a line, padded to 22 columns as the reader leaves them.
inline void Repeat(core::ScoreSheet& sheet, const std::string& text, int count = 1) {
    std::string padded = text;
    if (padded.size() < 22) padded.resize(22, ' ');
    for (int k = 0; k < count && sheet.LastLine < core::MaxLines; ++k)
        sheet.setLine(++sheet.LastLine, padded);
}

// Lines 1.. in order; the rhythm pass writes the beam codes when `beams` is set.
inline core::ScoreSheet MakeSheet(std::initializer_list<std::string> lines, bool beams = true) {
    core::ScoreSheet sheet;
    for (const std::string& text : lines)
        Repeat(sheet, text);
    if (beams) core::RhythmPass(sheet);
    return sheet;
}

// Treble clef, tempo 60 and 4/4 on lines 1..3, then `body` from line 4.
inline core::ScoreSheet Body(std::initializer_list<std::string> body, bool beams = true) {
    core::ScoreSheet sheet = MakeSheet({"       G", "TEMPO60", "RHYTM4/4"}, false);
    for (const std::string& text : body)
        Repeat(sheet, text);
    if (beams) core::RhythmPass(sheet);
    return sheet;
}

// The shipped demo scores, read and beamed; a demo that cannot be read gives a blank sheet.
inline constexpr const char* kDemoNames[] = {"dashti-tasnif", "chahargah-chaharmezrab",
                                             "shur-daramad", "esfahan-reng"};
inline core::ScoreSheet DemoSheet(const std::string& name) {
    std::ifstream in(std::string(TAHRIR_DATA_DIR) + "/demo/" + name + ".srv", std::ios::binary);
    core::Document doc;
    core::ParseScore(std::string(std::istreambuf_iterator<char>(in), {}), false, doc);
    core::RhythmPass(doc.Sheet);
    return doc.Sheet;
}

inline LayoutResult Lay(const core::ScoreSheet& sheet, double width = 60, View view = View::Page,
                        bool dxf = false) {
    LayoutOptions o;
    o.PageWidthUnits = width;
    o.ViewMode = view;
    o.DxfEnabled = dxf;
    return RefreshView(sheet, o);
}

template <class Pred> long Count(const LayoutResult& r, Pred pred) {
    return std::count_if(r.list.items.begin(), r.list.items.end(), pred);
}

inline std::vector<const DisplayItem*> Find(const LayoutResult& r, ItemKind kind,
                                            const std::string& text = {}) {
    std::vector<const DisplayItem*> out;
    for (const auto& it : r.list.items)
        if (it.kind == kind && (text.empty() || it.text == text)) out.push_back(&it);
    return out;
}
// The items point into the layout: a temporary one would leave them dangling.
std::vector<const DisplayItem*> Find(LayoutResult&& r, ItemKind kind,
                                     const std::string& text = {}) = delete;

inline long Strokes(const LayoutResult& r, WidthClass width) {
    return Count(r, [&](auto& it) { return it.kind == ItemKind::Stroke && it.width == width; });
}

// A layout as text: rows and staff end, row ratios, measure numbers, the place of each line
// that has one ("4@x,y") and where its drawing ends (">right"), and the display list.
inline std::string LayoutSummary(const LayoutResult& r) {
    std::ostringstream out;
    out.precision(4);
    out << "rows " << r.rows << ", staff end " << r.staffEnd << "\nratios";
    for (int i = 1; i <= r.rows; ++i)
        out << ' ' << r.RowRatios[i];
    out << "\nmeasures";
    for (const auto& m : r.measures)
        if (m.number > 0)
            out << ' ' << m.number << '@' << m.x << ',' << m.y << (m.visible ? "" : "h");
    out << "\nlines";
    for (std::size_t i = 1; i <= core::MaxLines; ++i) {
        const double right = i < r.LineRight.size() ? r.LineRight[i] : -1;
        if (r.positions.LinePosX[i] == -1 && right == -1) continue;
        out << ' ' << i << '@' << r.positions.LinePosX[i] << ',' << r.positions.LinePosY[i];
        if (right != -1) out << '>' << right;
    }
    out << '\n';
    return out.str() + r.list.dump();
}

// Compares the layout of `sheet` with the golden dump NAME.dump under the render test
// data and, when `dxf` is set, its DXF stream with NAME.dxf.
inline void ExpectGoldenLayout(const std::string& name, const core::ScoreSheet& sheet, double width,
                               View view = View::Page, bool dxf = false,
                               const std::string& description = {}) {
    LayoutOptions o;
    o.Description = description;
    o.PageWidthUnits = width, o.ViewMode = view, o.DxfEnabled = dxf;
    o.ScoreFileName = "golden.srv";
    const LayoutResult r = RefreshView(sheet, o);
    const std::string path = std::string(TAHRIR_TEST_DATA) + "/render/" + name;
    tahrir::test::ExpectGoldenText(path + ".dump", LayoutSummary(r));
    if (dxf) tahrir::test::ExpectGoldenText(path + ".dxf", r.dxf);
}

} // namespace tahrir::render::test
