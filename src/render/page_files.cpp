// PNG, PDF and SVG files of a laid-out page.

#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <algorithm>
#include <cctype>
#include <cmath>

#include "render/painter_backend.h"

namespace tahrir::render {

namespace {

constexpr int kPdfResolution = 600;
constexpr double kA4WidthMm = 210;

std::string Extension(const std::filesystem::path& path) {
    std::string ext = path.extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ext;
}

// The page drawn and its size in staff units: the screen picture or the printer's page.
struct Sheet {
    const DisplayList& list;
    double width, height;
    PaintOptions paint;
};

Sheet SheetFor(const LayoutResult& layout, const ImageOptions& options) {
    Sheet s{layout.list, layout.list.widthUnits, layout.list.heightUnits, {}};
    s.paint.textFontName = layout.TextFontName;
    s.paint.musicFontFile = options.musicFontFile;
    s.paint.currentLine = options.currentLine;
    if (options.print) {
        s.width = layout.printWidthUnits;
        s.height = layout.printHeightUnits;
        s.paint.printTarget = true;
    }
    return s;
}

std::string WritePng(const Sheet& sheet, const std::filesystem::path& path, int widthPx) {
    PaintOptions po = sheet.paint;
    po.pixelsPerUnit = widthPx / sheet.width;
    po.glyphSprites = true;
    const int height = std::max(1, static_cast<int>(std::ceil(sheet.height * po.pixelsPerUnit)));
    QImage image(widthPx, height, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return "the image is too large for " + path.string();
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        PaintDisplayList(painter, sheet.list, po);
    }
    if (!image.save(QString::fromStdString(path.string()), "PNG"))
        return "cannot write " + path.string();
    return {};
}

std::string WritePdf(const Sheet& sheet, const std::filesystem::path& path, bool printer) {
    QPdfWriter writer(QString::fromStdString(path.string()));
    writer.setResolution(kPdfResolution);
    // The printer's page is A4; the screen picture keeps its own proportions.
    const double heightMm = printer ? 297 : kA4WidthMm * sheet.height / sheet.width;
    writer.setPageSize(QPageSize(QSizeF(kA4WidthMm, heightMm), QPageSize::Millimeter));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter;
    if (!painter.begin(&writer)) return "cannot write " + path.string();
    PaintOptions po = sheet.paint;
    po.pixelsPerUnit = writer.width() / sheet.width;
    PaintDisplayList(painter, sheet.list, po);
    painter.end();
    return {};
}

std::string WriteSvg(const Sheet& sheet, const std::filesystem::path& path, int widthPx) {
    PaintOptions po = sheet.paint;
    po.pixelsPerUnit = widthPx / sheet.width;
    po.glyphsAsPaths = true; // text elements would lose the music font
    const int height = std::max(1, static_cast<int>(std::ceil(sheet.height * po.pixelsPerUnit)));
    QSvgGenerator svg;
    svg.setFileName(QString::fromStdString(path.string()));
    svg.setSize(QSize(widthPx, height));
    svg.setViewBox(QRect(0, 0, widthPx, height));
    QPainter painter;
    if (!painter.begin(&svg)) return "cannot write " + path.string();
    painter.fillRect(QRect(0, 0, widthPx, height), Qt::white);
    PaintDisplayList(painter, sheet.list, po);
    painter.end();
    return {};
}

} // namespace

std::string WritePage(const LayoutResult& layout, const std::filesystem::path& path,
                      const ImageOptions& options) {
    EnsureGuiApplication();
    Sheet sheet = SheetFor(layout, options);
    if (sheet.width <= 0 || sheet.height <= 0) return "nothing to draw";
    const std::string ext = Extension(path);
    // The print preview is a third of the printer's size with one-pixel lines.
    const bool preview = options.print && ext != ".pdf";
    sheet.paint.preview = preview;
    const int width = preview ? std::max(1, options.widthPixels / 3) : options.widthPixels;
    if (ext == ".png") return WritePng(sheet, path, width);
    if (ext == ".pdf") return WritePdf(sheet, path, options.print);
    if (ext == ".svg") return WriteSvg(sheet, path, width);
    return "unknown output type \"" + ext + "\" (use .png, .pdf, .svg or .dxf)";
}

} // namespace tahrir::render
