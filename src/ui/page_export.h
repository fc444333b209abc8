#pragma once
// Printed pages from the window: the settings of the print frame, the pages they give,
// painting them on a printer, and the exports to PDF, PNG, SVG and DXF.

#include <QRectF>
#include <filesystem>
#include <string>

#include "core/score_sheet.h"
#include "render/paged_layout.h"

class QPainter;
class QPrinter;

namespace tahrir::ui {

// What the print frame's sliders set.
struct PrintSettings {
    render::Paper paper = render::kA4;
    double LeftMargin = 3;
    double RightMargin = 4;
    double TopMargin = 26;
    double BottomMargin = 4;
    double StaffGap = 14;
    double ZoomBase = 3; // HSFSize / 3
};

// The score as the window holds it.
struct PageSource {
    const core::ScoreSheet* sheet = nullptr;
    std::string description;  // code page 1256
    std::string textFontName; // UTF-8
    std::string scoreFileName;
    double storedTempo = 60;
    std::filesystem::path musicFontFile;
};

render::LayoutOptions PrintLayoutOptions(const PageSource& source, const PrintSettings& settings);

render::PagedLayout LayOutPrintPages(const PageSource& source, const PrintSettings& settings);

// Paints one page filling `target` (device pixels), white behind it.
void PaintPrintedPage(QPainter& painter, const render::PrintedPage& page, const QRectF& target,
                      const PageSource& source, bool preview);

// Every page on the printer, one sheet of paper each. False when the printer refuses.
bool PrintPages(QPrinter& printer, const render::PagedLayout& pages, const PageSource& source);

// Writes the pages by the extension: one PDF, one PNG or SVG a page, or the DXF stream of
// the whole score. Returns an error text, or empty.
std::string ExportPages(const PageSource& source, const PrintSettings& settings,
                        const std::filesystem::path& path);

} // namespace tahrir::ui
