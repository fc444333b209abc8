#include "render/dxf_writer.h"

#include <cmath>
#include <cstdio>

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

void DxfWriter::put(std::string_view token) {
    m_out.append(token);
    m_out.append("\r\n");
}

void DxfWriter::begin(double pageWidthUnits, std::string_view fileName) {
    m_out.clear();
    if (!m_enabled) return;
    for (auto t : {" 0 ", "SECTION", " 2 ", "ENTITIES", " 0 "}) put(t);
    for (auto t : {"TEXT", "8", "finger", " 10"}) put(t);
    putX(pageWidthUnits / 2 - 6);
    put(" 20");
    put(VbFormat(220, 2));
    for (auto t : {" 30", "0.0", " 40", "2.0", "  1"}) put(t);
    put(fileName);
    for (auto t : {"  7", "ITALICC", "  0"}) put(t);
}

void DxfWriter::end() {
    if (!m_enabled) return;
    for (auto t : {"ENDSEC", " 0 ", "EOF"}) put(t);
}

void DxfWriter::text(std::string_view layer, double x, double y, std::string_view height,
                     std::string_view letter, std::string_view extra) {
    if (!m_enabled) return;
    put("TEXT");
    put("8");
    put(layer);
    put(" 10");
    putX(x);
    put(" 20");
    putX(y);
    for (auto t : {" 30", "0.0", " 40"}) put(t);
    put(height);
    put("  1");
    put(letter);
    m_out.append(extra);
    for (auto t : {"  7", "MUM", "  0"}) put(t);
}

void DxfWriter::line(std::string_view layer, double x1, double y1, double x2, double y2) {
    if (!m_enabled) return;
    put("LINE");
    put("  8");
    put(layer);
    put(" 10");
    putX(x1);
    put(" 20");
    putX(y1);
    put(" 30");
    put("0.0");
    put(" 11");
    putX(x2);
    put(" 21");
    putX(y2);
    for (auto t : {" 31", "0.0", "  0"}) put(t);
}

void DxfWriter::polyline(std::string_view layer, double x1, double y1, double x2, double y2) {
    if (!m_enabled) return;
    put("POLYLINE");
    put("8");
    put(layer);
    for (auto t : {"66", "1", "10", "0.0", "20", "0.0", " 30", "0.0", " 40", "0.25", " 41",
                   "0.25", "  0"})
        put(t);
    const double xs[2] = {x1, x2};
    const double ys[2] = {y1, y2};
    for (int i = 0; i < 2; ++i) {
        for (auto t : {"VERTEX", "  8", "0", " 10"}) put(t);
        putX(xs[i]);
        put(" 20");
        putX(ys[i]);
        for (auto t : {" 30", "0.0", "  0"}) put(t);
    }
    for (auto t : {"SEQEND", "  8", "0", "  0"}) put(t);
}

} // namespace tahrir::render
