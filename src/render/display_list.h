#pragma once
// What the layout walk draws, in staff units (y grows downward), before any back end
// turns it into pixels, PDF, SVG or DXF.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tahrir::render {

enum class ItemKind : std::uint8_t { Glyph, Stroke, Arc, Text, MeasureLabel };
// Stroke widths follow the drawing width the renderer sets around notes and beams.
enum class WidthClass : std::uint8_t { Normal, Stem, Beam };
enum class FontRole : std::uint8_t { Music, Text };

inline constexpr std::uint32_t kBlack = 0x000000;
inline constexpr std::uint32_t kRed = 0xFF0000;  // over-full measure, current line
inline constexpr std::uint32_t kBlue = 0x0000FF; // measure numbers

// Targets an item goes to: the screen picture, the print target, or both.
enum Target : std::uint8_t { OnScreen = 1, OnPrint = 2, OnBoth = 3 };

struct DisplayItem {
    ItemKind kind = ItemKind::Glyph;
    int line = 0; // sheet index the item belongs to, 0 for none
    int row = 0;  // the staff row the walk was on when it drew the item
    // Glyph and text: pen position (top left of the text cell). Stroke: from (x, y) to
    // (x2, y2). Arc: centre (x, y), radius x2, angles a0..a1 in radians.
    double x = 0, y = 0, x2 = 0, y2 = 0;
    double a0 = 0, a1 = 0;
    double size = 1; // font size as a share of the music font size (4 staff units)
    WidthClass width = WidthClass::Normal;
    FontRole font = FontRole::Music;
    bool dashed = false;
    bool visible = true;
    bool stemDown = false; // beamed head whose stem hangs down
    bool centred = false;  // text centred on x rather than starting there
    std::uint8_t target = OnScreen;
    std::uint32_t colour = kBlack;
    std::string text; // glyph codes (code page 1256 bytes) or UTF-8 text
};

// The x in staff units where an item's ink ends on the right; text widths are estimated
// from the number of characters.
double RightEdge(const DisplayItem& item);

// The y in staff units where an item's ink begins at the top (y grows downward); glyph
// heights are those of their kind (stems up, accidentals, heads and marks).
double TopEdge(const DisplayItem& item);

// The y where an item's ink ends at the bottom.
double BottomEdge(const DisplayItem& item);

// The height of a text item's line in staff units.
double TextHeight(const DisplayItem& item);

// The CAD drawing of the page as the walk records it beside the items: staff units with y
// growing upward, and the layers, heights, letters and extra group codes of each entity.
enum class DxfKind : std::uint8_t { Text, Line, Polyline };

struct DxfEntity {
    DxfKind kind = DxfKind::Text;
    std::string_view layer; // "1", "2", "3" or "finger": always a literal
    // Text: the insertion point. Line and polyline: from (x, y) to (x2, y2).
    double x = 0, y = 0, x2 = 0, y2 = 0;
    double height = 0; // text height, written "#.#"
    std::string letter;
    double widthFactor = 0;        // group 41 when above 0
    std::optional<double> oblique; // group 51, degrees
    std::optional<double> angle;   // group 50, rotation in degrees
};

struct DxfDrawing {
    bool enabled = false; // off: nothing is recorded and nothing is written
    double titleX = 0;    // the title text's x; it stands at y 220
    std::string title;    // the score's file name
    std::vector<DxfEntity> entities;
};

struct DisplayList {
    std::vector<DisplayItem> items;
    DxfDrawing dxf;
    double widthUnits = 0;  // the picture's width in staff units
    double heightUnits = 0; // the picture's height in staff units

    void clear() {
        items.clear();
        dxf.entities.clear();
    }
    // One line per item, numbers to two decimals: the form golden tests compare.
    std::string dump() const;
};

} // namespace tahrir::render
