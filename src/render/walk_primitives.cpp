// The drawing primitives of the walk: every glyph, stroke, arc and text goes through
// here into the display list, and only on the painting pass.

#include <algorithm>

#include "render/page_walk.h"

namespace tahrir::render {

namespace {

constexpr double kTextGap = 0.3;  // between a text and what stands under it
constexpr double kStaffTop = 4;   // from the bottom line up to the top line
constexpr int kLiftRounds = 8;    // a lifted text may meet something higher up

double LeftEdge(const DisplayItem& o) {
    if (o.kind == ItemKind::Stroke) return std::min(o.x, o.x2);
    if (o.kind == ItemKind::Arc) return o.x - o.x2;
    return o.x;
}

// The top of the highest drawing of the text's row that reaches into the text's box.
// Items of one row: the walk draws a row's items one after another, so a row's span of
// the list holds them all (and only a few of other rows).
struct Span {
    std::size_t begin = 0, end = 0;
};

std::vector<Span> RowSpans(const std::vector<DisplayItem>& items) {
    std::vector<Span> spans;
    for (std::size_t k = 0; k < items.size(); ++k) {
        const auto row = static_cast<std::size_t>(std::max(items[k].row, 0));
        if (row >= spans.size()) spans.resize(row + 1, Span{k, k});
        Span& s = spans[row];
        if (s.end == s.begin) s.begin = k;
        s.end = k + 1;
    }
    return spans;
}

double HighestUnder(const std::vector<DisplayItem>& items, Span span, const DisplayItem& t) {
    const double left = LeftEdge(t), right = RightEdge(t);
    const double bottom = t.y + TextHeight(t) + kTextGap;
    double top = bottom;
    for (std::size_t k = span.begin; k < span.end; ++k) {
        const DisplayItem& o = items[k];
        if (o.row != t.row || o.kind == ItemKind::Text || o.kind == ItemKind::MeasureLabel)
            continue;
        if (LeftEdge(o) > right || RightEdge(o) < left) continue;
        if (BottomEdge(o) < t.y - kTextGap) continue; // wholly above the text
        top = std::min(top, TopEdge(o));
    }
    return top;
}

} // namespace

void PageWalk::glyph(int line, double x, double y, std::string text, double size,
                     std::uint32_t colour) {
    if (!Paint || text.empty()) return;
    DisplayItem it;
    it.kind = ItemKind::Glyph;
    it.line = line;
    it.x = x;
    it.y = y;
    it.size = size;
    it.colour = colour;
    it.text = std::move(text);
    it.target = PrintActive ? OnBoth : OnScreen;
    it.row = RowIndex;
    noteRight(it);
    m_out.list.items.push_back(std::move(it));
}

void PageWalk::stroke(double x1, double y1, double x2, double y2, WidthClass w,
                      std::uint32_t colour, bool dashed) {
    if (!Paint) return;
    DisplayItem it;
    it.kind = ItemKind::Stroke;
    it.x = x1;
    it.y = y1;
    it.x2 = x2;
    it.y2 = y2;
    it.width = w;
    it.colour = colour;
    it.dashed = dashed;
    it.target = PrintActive ? OnBoth : OnScreen;
    it.row = RowIndex;
    noteRight(it);
    m_out.list.items.push_back(std::move(it));
}

void PageWalk::arc(double cx, double cy, double r, double a0, double a1) {
    if (!Paint) return;
    DisplayItem it;
    it.kind = ItemKind::Arc;
    it.x = cx;
    it.y = cy;
    it.x2 = r;
    it.a0 = a0;
    it.a1 = a1;
    it.target = PrintActive ? OnBoth : OnScreen;
    it.row = RowIndex;
    noteRight(it);
    m_out.list.items.push_back(std::move(it));
}

void PageWalk::text(int line, double x, double y, std::string utf8, double size,
                    std::uint8_t target) {
    if (!Paint) return;
    DisplayItem it;
    it.kind = ItemKind::Text;
    it.line = line;
    it.x = x;
    it.y = y;
    it.size = size;
    it.font = FontRole::Text;
    it.text = std::move(utf8);
    it.target = target != 0 ? target : static_cast<std::uint8_t>(PrintActive ? OnBoth : OnScreen);
    it.row = RowIndex;
    noteRight(it);
    m_out.list.items.push_back(std::move(it));
}

void PageWalk::noteRight(const DisplayItem& item) {
    if (item.target == OnPrint) return; // the printed title is placed on its own page
    const double right = RightEdge(item);
    if (m_currentLine > 0 && m_currentLine < static_cast<int>(m_out.LineRight.size()))
        m_out.LineRight[static_cast<std::size_t>(m_currentLine)] =
            std::max(m_out.LineRight[static_cast<std::size_t>(m_currentLine)], right);
    if (RowIndex >= static_cast<int>(m_rowRight.size())) m_rowRight.resize(RowIndex + 1, 0.0);
    m_rowRight[static_cast<std::size_t>(RowIndex)] =
        std::max(m_rowRight[static_cast<std::size_t>(RowIndex)], right);
}

void PageWalk::dxfText(std::string_view layer, double x, double y, double height,
                       std::string letter, const DxfGroups& groups) {
    if (!dxfOn()) return;
    DxfEntity e;
    e.kind = DxfKind::Text;
    e.layer = layer;
    e.x = x;
    e.y = y;
    e.height = height;
    e.letter = std::move(letter);
    e.widthFactor = groups.widthFactor;
    e.oblique = groups.oblique;
    e.angle = groups.angle;
    m_out.list.dxf.entities.push_back(std::move(e));
}

void PageWalk::dxfLine(std::string_view layer, double x1, double y1, double x2, double y2) {
    if (!dxfOn()) return;
    m_out.list.dxf.entities.push_back({DxfKind::Line, layer, x1, y1, x2, y2, 0, {}, 0, {}, {}});
}

void PageWalk::dxfPolyline(std::string_view layer, double x1, double y1, double x2, double y2) {
    if (!dxfOn()) return;
    m_out.list.dxf.entities.push_back({DxfKind::Polyline, layer, x1, y1, x2, y2, 0, {}, 0, {}, {}});
}

void PageWalk::setPos(int i, double x, double y) {
    if (i <= 0 || i > core::MaxLines) return;
    m_out.positions.LinePosX[i] = x;
    m_out.positions.LinePosY[i] = y;
}

} // namespace tahrir::render

namespace tahrir::render {

// Text over the staff stands above the highest thing drawn under it on its row: beams,
// stems, heads and marks that were drawn after the text reached it.
void PageWalk::liftTexts() {
    auto& items = m_out.list.items;
    const std::vector<Span> spans = RowSpans(items);
    for (DisplayItem& t : items) {
        if (t.kind != ItemKind::Text || t.line <= 0 || t.line > core::MaxLines) continue;
        const double base = m_out.positions.LinePosY[static_cast<std::size_t>(t.line)];
        if (t.y >= base - kStaffTop) continue; // text under the staff stays where it is
        for (int round = 0; round < kLiftRounds; ++round) {
            const double top =
                HighestUnder(items, spans[static_cast<std::size_t>(std::max(t.row, 0))], t);
            if (top >= t.y + TextHeight(t) + kTextGap) break;
            t.y = top - TextHeight(t) - kTextGap;
        }
    }
}

} // namespace tahrir::render
