#include "render/display_list.h"

#include <cstdio>

namespace tahrir::render {

namespace {
const char* KindName(ItemKind kind) {
    switch (kind) {
    case ItemKind::Glyph: return "glyph";
    case ItemKind::Stroke: return "stroke";
    case ItemKind::Arc: return "arc";
    case ItemKind::Text: return "text";
    case ItemKind::MeasureLabel: return "measure";
    }
    return "?";
}

const char* WidthName(WidthClass w) {
    switch (w) {
    case WidthClass::Normal: return "normal";
    case WidthClass::Stem: return "stem";
    case WidthClass::Beam: return "beam";
    }
    return "?";
}

// Glyph codes above 127 are shown as <n> so that dumps stay plain ASCII.
std::string Printable(const std::string& text, bool glyph) {
    if (!glyph) return text;
    std::string out;
    for (unsigned char c : text) {
        if (c >= 32 && c < 127) {
            out += static_cast<char>(c);
        } else {
            out += '<' + std::to_string(c) + '>';
        }
    }
    return out;
}
} // namespace

std::string DisplayList::dump() const {
    std::string out;
    char buf[256];
    for (const DisplayItem& it : items) {
        std::snprintf(buf, sizeof buf, "%s L%d %.2f %.2f", KindName(it.kind), it.line, it.x,
                      it.y);
        out += buf;
        switch (it.kind) {
        case ItemKind::Stroke:
            std::snprintf(buf, sizeof buf, " %.2f %.2f %s%s", it.x2, it.y2, WidthName(it.width),
                          it.dashed ? " dashed" : "");
            out += buf;
            break;
        case ItemKind::Arc:
            std::snprintf(buf, sizeof buf, " r%.2f %.2f..%.2f", it.x2, it.a0, it.a1);
            out += buf;
            break;
        default:
            std::snprintf(buf, sizeof buf, " s%.2f \"", it.size);
            out += buf;
            out += Printable(it.text, it.kind == ItemKind::Glyph);
            out += '"';
            break;
        }
        if (it.colour != kBlack) {
            std::snprintf(buf, sizeof buf, " #%06X", static_cast<unsigned>(it.colour));
            out += buf;
        }
        if (it.centred) out += " centred";
        if (!it.visible) out += " hidden";
        if (it.target != OnScreen) out += it.target == OnPrint ? " print" : " both";
        out += '\n';
    }
    return out;
}

} // namespace tahrir::render
