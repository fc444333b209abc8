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

constexpr int kPdfResolution = 300;
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

// The file of page n: OUT.png becomes OUT-1.png, OUT-2.png, ...
std::filesystem::path NumberedPath(const std::filesystem::path& path, int n) {
    std::filesystem::path numbered = path;
    numbered.replace_filename(path.stem().string() + "-" + std::to_string(n) +
                              path.extension().string());
    return numbered;
}

std::string WritePdfPages(const std::vector<PrintedPage>& pages, const Paper& paper,
                          const std::filesystem::path& path, const PaintOptions& paint) {
    QPdfWriter writer(QString::fromStdString(path.string()));
    writer.setResolution(kPdfResolution);
    writer.setPageSize(QPageSize(QSizeF(paper.widthMm, paper.heightMm), QPageSize::Millimeter));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter;
    if (!painter.begin(&writer)) return "cannot write " + path.string();
    for (std::size_t p = 0; p < pages.size(); ++p) {
        if (p > 0) writer.newPage();
        PaintOptions po = paint;
        po.pixelsPerUnit = writer.width() / pages[p].list.widthUnits;
        PaintDisplayList(painter, pages[p].list, po);
    }
    painter.end();
    return {};
}

} // namespace

std::vector<std::filesystem::path> PageFiles(const std::filesystem::path& path, int count) {
    std::vector<std::filesystem::path> files;
    if (Extension(path) == ".pdf") return {path};
    for (int n = 1; n <= count; ++n) files.push_back(NumberedPath(path, n));
    return files;
}

std::string WritePages(const PagedLayout& paged, const Paper& paper,
                       const std::filesystem::path& path, const ImageOptions& options) {
    EnsureGuiApplication();
    if (paged.pages.empty()) return "nothing to draw";
    PaintOptions paint;
    paint.textFontName = paged.layout.TextFontName;
    paint.musicFontFile = options.musicFontFile;
    const std::string ext = Extension(path);
    if (ext == ".pdf") return WritePdfPages(paged.pages, paper, path, paint);
    if (ext != ".png" && ext != ".svg")
        return "unknown output type \"" + ext + "\" (use .png, .pdf or .svg)";
    const auto files = PageFiles(path, static_cast<int>(paged.pages.size()));
    for (std::size_t p = 0; p < paged.pages.size(); ++p) {
        const DisplayList& list = paged.pages[p].list;
        const Sheet sheet{list, list.widthUnits, list.heightUnits, paint};
        const std::string error = ext == ".png" ? WritePng(sheet, files[p], options.widthPixels)
                                                : WriteSvg(sheet, files[p], options.widthPixels);
        if (!error.empty()) return error;
    }
    return {};
}

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
