#include "ui/page_export.h"

#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <algorithm>
#include <cctype>
#include <fstream>

#include "render/painter_backend.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {

std::string Lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

} // namespace

render::LayoutOptions PrintLayoutOptions(const PageSource& source, const PrintSettings& settings) {
    render::LayoutOptions o;
    o.ZoomBase = settings.ZoomBase;
    o.LeftMargin = settings.LeftMargin;
    o.RightMargin = settings.RightMargin;
    o.TopMargin = settings.TopMargin;
    o.StaffGap = settings.StaffGap;
    o.Description = source.description;
    o.TextFontName = source.textFontName;
    o.ScoreFileName = source.scoreFileName;
    o.StoredTempo = source.storedTempo;
    return render::PaperLayoutOptions(o, settings.paper);
}

render::PagedLayout LayOutPrintPages(const PageSource& source, const PrintSettings& settings) {
    render::PageOptions pages{settings.paper};
    pages.bottomMargin = settings.BottomMargin;
    if (source.sheet == nullptr) return {};
    return render::LayOutPages(*source.sheet, PrintLayoutOptions(source, settings), pages);
}

void PaintPrintedPage(QPainter& painter, const render::PrintedPage& page, const QRectF& target,
                      const PageSource& source, bool preview) {
    painter.save();
    painter.fillRect(target, Qt::white);
    render::PaintOptions po;
    po.musicFontFile = source.musicFontFile;
    po.textFontName = render::ResolveTextFont(source.textFontName);
    po.pixelsPerUnit = target.width() / page.list.widthUnits;
    po.originX = target.left();
    po.originY = target.top();
    po.preview = preview;
    painter.setClipRect(target);
    render::PaintDisplayList(painter, page.list, po);
    painter.restore();
}

bool PrintPages(QPrinter& printer, const render::PagedLayout& pages, const PageSource& source) {
    printer.setFullPage(true); // the pages carry their own margins
    QPainter painter;
    if (pages.pages.empty() || !painter.begin(&printer)) return false;
    for (std::size_t p = 0; p < pages.pages.size(); ++p) {
        if (p > 0 && !printer.newPage()) return false;
        // The page fills the paper's width; its height follows the paper's proportions.
        const QRectF paper = printer.pageLayout().fullRectPixels(printer.resolution());
        const QRectF area(0, 0, paper.width(), paper.height());
        PaintPrintedPage(painter, pages.pages[p], area, source, false);
    }
    return painter.end();
}

std::string ExportPages(const PageSource& source, const PrintSettings& settings,
                        const std::filesystem::path& path) {
    if (source.sheet == nullptr) return TrStd("Print", "no score is open");
    const std::string ext = Lower(path.extension().string());
    if (ext == ".dxf") {
        render::LayoutOptions o = PrintLayoutOptions(source, settings);
        o.DxfEnabled = true;
        std::ofstream file(path, std::ios::binary);
        file << render::RefreshView(*source.sheet, o).dxf;
        return file ? std::string() : TrStd("Print", "cannot write ") + path.string();
    }
    const render::PagedLayout pages = LayOutPrintPages(source, settings);
    render::ImageOptions image;
    image.musicFontFile = source.musicFontFile;
    return render::WritePages(pages, settings.paper, path, image);
}

} // namespace tahrir::ui
