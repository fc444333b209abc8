#include "render/hit_targets.h"

#include <algorithm>

#include "render/glyph_table.h"

namespace tahrir::render {

namespace {

// A glyph's box: its advances across, and about one staff space around its baseline
// (heads and accidentals are centred there).
HitBox GlyphBox(const DisplayItem& it) {
    HitBox box{it.line, it.x, 0, it.x, 0};
    double baseline = it.y;
    bool any = false;
    double x = it.x;
    for (unsigned char c : it.text) {
        const GlyphInfo& g = LookupGlyph(c);
        if (g.codepoint != 0) {
            baseline = it.y + g.dy * it.size;
            box.left = any ? std::min(box.left, x + g.dx * it.size) : x + g.dx * it.size;
            any = true;
        }
        x += g.advance * it.size;
    }
    box.right = std::max(x, box.left + 0.5);
    box.top = baseline - 1.0 * it.size * 2;
    box.bottom = baseline + 1.0 * it.size;
    return box;
}

// A text run: about half an em a character across, one em down from the pen.
HitBox TextBox(const DisplayItem& it) {
    const double em = 4 * it.size;
    double chars = 0;
    for (unsigned char c : it.text)
        if ((c & 0xC0) != 0x80) chars += 1; // count UTF-8 characters, not bytes
    return {it.line, it.x, it.y, it.x + chars * em * 0.5, it.y + em};
}

} // namespace

std::vector<HitBox> HitTargets(const LayoutResult& layout) {
    std::vector<HitBox> boxes;
    for (const DisplayItem& it : layout.list.items) {
        if (it.line <= 0 || !it.visible) continue;
        if (it.kind == ItemKind::Glyph) boxes.push_back(GlyphBox(it));
        if (it.kind == ItemKind::Text) boxes.push_back(TextBox(it));
    }
    return boxes;
}

int LineAt(const LayoutResult& layout, double x, double y) {
    int found = 0;
    for (const HitBox& b : HitTargets(layout))
        if (x >= b.left && x <= b.right && y >= b.top && y <= b.bottom) found = b.line;
    return found;
}

} // namespace tahrir::render
