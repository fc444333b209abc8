#pragma once
// Back ends of the display list: a QPainter target for the screen and printer, and PNG,
// PDF and SVG files. The only part of the render module that uses QtGui.

#include <filesystem>
#include <string>

#include <vector>

#include "render/page_layout.h"
#include "render/paged_layout.h"

class QPainter;

namespace tahrir::render {

struct PaintOptions {
    std::filesystem::path musicFontFile; // the music font; glyphs are left out without it
    double pixelsPerUnit = 20; // device pixels per staff unit
    double originX = 0, originY = 0;
    bool printTarget = false;  // draw the print target's items instead of the screen's
    bool preview = false;      // the print preview: every line one pixel wide
    bool glyphsAsPaths = false; // outlines instead of font text (SVG keeps the music font)
    bool glyphSprites = false;  // raster targets: each glyph drawn once and then copied
    std::string textFontName;   // empty: the layout's text font
    int currentLine = 0;        // drawn red
    int selStart = 0, selEnd = 0; // drawn blue
};

// A QGuiApplication for a process without one (command line, tests), on the offscreen
// platform unless one is chosen already.
void EnsureGuiApplication();

// The text font actually used: the name when installed, else a Persian font of the system.
std::string ResolveTextFont(const std::string& name);

void PaintDisplayList(QPainter& painter, const DisplayList& list, const PaintOptions& options);

struct ImageOptions {
    std::filesystem::path musicFontFile;
    int widthPixels = 1600; // PNG and SVG width of the page view
    bool print = false;     // the print target: the printer (PDF) or its preview (PNG, SVG)
    int currentLine = 0;
};

// Writes the page to .png, .pdf or .svg by the extension. Returns an error text, or empty.
std::string WritePage(const LayoutResult& layout, const std::filesystem::path& path,
                      const ImageOptions& options);

// The files a paged output writes: the PDF itself, or one PNG or SVG a page named
// OUT-1.png, OUT-2.png, ...
std::vector<std::filesystem::path> PageFiles(const std::filesystem::path& path, int count);

// Writes the pages: one PDF of all of them, or one PNG or SVG file a page. Returns an
// error text, or empty.
std::string WritePages(const PagedLayout& paged, const Paper& paper,
                       const std::filesystem::path& path, const ImageOptions& options);

} // namespace tahrir::render
