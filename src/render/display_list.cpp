#include "render/display_list.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "render/glyph_table.h"

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

double RightEdge(const DisplayItem& it) {
    constexpr double kTextCharWidth = 2.0; // staff units of a character at size 1
    constexpr double kFlagReach = 1.0;     // a flag reaches beyond its glyph's advance
    constexpr std::string_view kFlagged = "eExXrR";
    switch (it.kind) {
    case ItemKind::Stroke: return std::max(it.x, it.x2);
    case ItemKind::Arc: {
        // The rightmost point of the arc: an end, or angle 0 when the arc passes it.
        double right = std::max(std::cos(it.a0), std::cos(it.a1));
        const double turn = 2 * std::numbers::pi;
        if (std::floor(it.a0 / turn) != std::floor(it.a1 / turn)) right = 1;
        return it.x + it.x2 * right;
    }
    case ItemKind::Glyph: {
        double right = it.x;
        double pen = it.x;
        for (unsigned char c : it.text) {
            const GlyphInfo& g = LookupGlyph(c);
            if (g.codepoint != 0) right = std::max(right, pen + (g.dx + g.advance) * it.size);
            pen += g.advance * it.size;
            if (kFlagged.find(static_cast<char>(c)) != std::string_view::npos)
                right = std::max(right, pen + kFlagReach * it.size);
        }
        return right;
    }
    case ItemKind::Text:
    case ItemKind::MeasureLabel: {
        std::size_t chars = 0;
        for (unsigned char c : it.text) chars += (c & 0xC0) != 0x80; // UTF-8 lead bytes
        const double width = static_cast<double>(chars) * kTextCharWidth * it.size;
        return it.centred || it.kind == ItemKind::MeasureLabel ? it.x + width / 2 : it.x + width;
    }
    }
    return it.x;
}

double TextHeight(const DisplayItem& it) {
    return 4 * it.size * 1.2; // the font's em, 4 staff units at size 1, with its leading
}

double BottomEdge(const DisplayItem& it) {
    switch (it.kind) {
    case ItemKind::Stroke: return std::max(it.y, it.y2);
    case ItemKind::Arc: {
        double low = std::min(std::sin(it.a0), std::sin(it.a1));
        const double turn = 2 * std::numbers::pi;
        const double down = 1.5 * std::numbers::pi;
        if (std::floor((it.a0 - down) / turn) != std::floor((it.a1 - down) / turn)) low = -1;
        return it.y - it.x2 * low;
    }
    case ItemKind::Glyph: return it.y + (5.55 + 1.0) * it.size;
    case ItemKind::Text:
    case ItemKind::MeasureLabel: return it.y + TextHeight(it);
    }
    return it.y;
}

double TopEdge(const DisplayItem& it) {
    constexpr std::string_view kStemUp = "qhexrg";
    constexpr std::string_view kTall = "#b<!n";
    switch (it.kind) {
    case ItemKind::Stroke: return std::min(it.y, it.y2);
    case ItemKind::Arc: {
        // Angles run counter-clockwise on screen: a point is (x + r cos a, y - r sin a).
        double high = std::max(std::sin(it.a0), std::sin(it.a1));
        const double turn = 2 * std::numbers::pi;
        const double up = std::numbers::pi / 2;
        if (std::floor((it.a0 - up) / turn) != std::floor((it.a1 - up) / turn)) high = 1;
        return it.y - it.x2 * high;
    }
    case ItemKind::Glyph: {
        double top = it.y + 5.55 * it.size;
        for (unsigned char c : it.text) {
            const GlyphInfo& g = LookupGlyph(c);
            if (g.codepoint == 0) continue;
            const char k = static_cast<char>(c);
            const double ascent = kStemUp.find(k) != std::string_view::npos ? 4.0
                                  : kTall.find(k) != std::string_view::npos ? 2.0
                                  : c == '&' ? 7.0
                                             : 1.0;
            top = std::min(top, it.y + (g.dy - ascent) * it.size);
        }
        return top;
    }
    case ItemKind::Text:
    case ItemKind::MeasureLabel: return it.y;
    }
    return it.y;
}

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
