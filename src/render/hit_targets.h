#pragma once
// Hit targets of the page: which line's symbol lies under a point, for mouse editing.

#include "render/page_layout.h"

namespace tahrir::render {

struct HitBox {
    int line = 0;
    double left = 0, top = 0, right = 0, bottom = 0; // staff units
};

// One box per drawn glyph or text that belongs to a line, in drawing order.
std::vector<HitBox> HitTargets(const LayoutResult& layout);

// The line whose symbol holds the point, the last drawn winning; 0 for none.
int LineAt(const LayoutResult& layout, double x, double y);

} // namespace tahrir::render
