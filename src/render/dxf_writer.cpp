#include "render/dxf_writer.h"

#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <string_view>

namespace tahrir::render {

std::string VbFormat(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    // Round half away from zero on the decimal value, as the picture format does.
    const double scaled = std::round(std::abs(value) * scale + 1e-9);
    const auto whole = static_cast<long long>(scaled / scale);
    auto frac = static_cast<long long>(scaled - static_cast<double>(whole) * scale);
    std::string out;
    if (value < 0 && scaled > 0) out += '-';
    if (whole != 0) out += std::to_string(whole);
    out += '.';
    if (frac != 0) {
        char buf[32];
        std::snprintf(buf, sizeof buf, "%0*lld", decimals, frac);
        std::string digits = buf;
        while (!digits.empty() && digits.back() == '0') digits.pop_back();
        out += digits;
    }
    return out;
}

namespace {

class DxfStream {
public:
    void put(std::string_view token) {
        m_out.append(token);
        m_out.append("\r\n");
    }
    void put(std::initializer_list<std::string_view> tokens) {
        for (std::string_view t : tokens) put(t);
    }
    void putX(double x) { put(VbFormat(x, 2)); }
    // Sizes and angles in the "#.#" form ("2.0", "355.0"); width factors as short as
    // they go ("0.6", "0.65").
    void putFixed(double v) { put(Formatted("%.1f", v)); }
    void putShort(double v) { put(Formatted("%g", v)); }

    void text(const DxfEntity& e) {
        put({"TEXT", "8", e.layer, " 10"});
        putX(e.x);
        put(" 20");
        putX(e.y);
        put({" 30", "0.0", " 40"});
        putFixed(e.height);
        put("  1");
        put(e.letter);
        if (e.widthFactor > 0) {
            put(" 41");
            putShort(e.widthFactor);
        }
        if (e.oblique) {
            put(" 51");
            putFixed(*e.oblique);
        }
        if (e.angle) {
            put(" 50");
            put(VbFormat(*e.angle, 1));
        }
        put({"  7", "MUM", "  0"});
    }

    void line(const DxfEntity& e) {
        put({"LINE", "  8", e.layer, " 10"});
        putX(e.x);
        put(" 20");
        putX(e.y);
        put({" 30", "0.0", " 11"});
        putX(e.x2);
        put(" 21");
        putX(e.y2);
        put({" 31", "0.0", "  0"});
    }

    // A two-vertex POLYLINE of width 0.25.
    void polyline(const DxfEntity& e) {
        put({"POLYLINE", "8", e.layer, "66", "1", "10", "0.0", "20", "0.0", " 30", "0.0",
             " 40", "0.25", " 41", "0.25", "  0"});
        for (const auto& [x, y] : {std::pair{e.x, e.y}, std::pair{e.x2, e.y2}}) {
            put({"VERTEX", "  8", "0", " 10"});
            putX(x);
            put(" 20");
            putX(y);
            put({" 30", "0.0", "  0"});
        }
        put({"SEQEND", "  8", "0", "  0"});
    }

    std::string take() { return std::move(m_out); }

private:
    static std::string Formatted(const char* format, double v) {
        char buf[32];
        std::snprintf(buf, sizeof buf, format, v);
        return buf;
    }
    std::string m_out;
};

} // namespace

std::string WriteDxf(const DisplayList& list) {
    const DxfDrawing& d = list.dxf;
    if (!d.enabled) return {};
    DxfStream out;
    out.put({" 0 ", "SECTION", " 2 ", "ENTITIES", " 0 "});
    out.put({"TEXT", "8", "finger", " 10"});
    out.putX(d.titleX);
    out.put(" 20");
    out.put(VbFormat(220, 2));
    out.put({" 30", "0.0", " 40", "2.0", "  1"});
    out.put(d.title);
    out.put({"  7", "ITALICC", "  0"});
    for (const DxfEntity& e : d.entities) {
        switch (e.kind) {
        case DxfKind::Text: out.text(e); break;
        case DxfKind::Line: out.line(e); break;
        case DxfKind::Polyline: out.polyline(e); break;
        }
    }
    out.put({"ENDSEC", " 0 ", "EOF"});
    return out.take();
}

} // namespace tahrir::render
