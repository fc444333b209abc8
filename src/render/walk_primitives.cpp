// The drawing primitives of the walk: every glyph, stroke, arc and text goes through
// here into the display list, and only on the painting pass.

#include "render/page_walk.h"

namespace tahrir::render {

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
    m_out.list.items.push_back(std::move(it));
}

void PageWalk::setPos(int i, double x, double y) {
    if (i <= 0 || i > core::MaxLines) return;
    m_out.positions.LinePosX[i] = x;
    m_out.positions.LinePosY[i] = y;
}

} // namespace tahrir::render
