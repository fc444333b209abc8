#pragma once
// The DXF drawing written alongside the page: one token per line, group codes with their
// blanks, numbers in the picture-string formats of the original drawing.

#include <string>
#include <string_view>

namespace tahrir::render {

// A number in a "####.##" style format: no leading zero, the point always written,
// trailing zeros of the fraction dropped ("3.", ".5", "-1.25").
std::string VbFormat(double value, int decimals);

class DxfWriter {
public:
    // Off: every call is dropped, so nothing is formatted and nothing reaches the disk.
    void setEnabled(bool on) { m_enabled = on; }
    bool enabled() const { return m_enabled; }

    // Starts a pass anew: the skeleton and the title text. The stream of the last pass
    // is the one kept.
    void begin(double pageWidthUnits, std::string_view fileName);
    void end();

    // A TEXT entity; `extra` is the optional " 41"/" 51"/" 50" pairs, already laid out.
    void text(std::string_view layer, double x, double y, std::string_view height,
              std::string_view letter, std::string_view extra = {});
    void line(std::string_view layer, double x1, double y1, double x2, double y2);
    // A two-vertex POLYLINE of width 0.25.
    void polyline(std::string_view layer, double x1, double y1, double x2, double y2);

    const std::string& contents() const { return m_out; }

private:
    void put(std::string_view token);
    void putX(double x) { put(VbFormat(x, 2)); }

    bool m_enabled = false;
    std::string m_out;
};

// The width-factor and angle pairs of the clefs.
inline constexpr std::string_view kClefExtra = " 41\r\n1.2\r\n 51\r\n355.0\r\n";

} // namespace tahrir::render
