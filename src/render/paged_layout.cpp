#include "render/paged_layout.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace tahrir::render {

namespace {

constexpr double kTwipsPerMm = 1440 / 25.4;
constexpr double kNumberSize = 0.45;   // page number, share of the music font
constexpr double kNumberSpace = 3;     // staff units the page number takes at the foot

struct RowBand {
    double top = 0, bottom = 0;
    bool used = false;
};

bool OnScreenTarget(const DisplayItem& it) {
    return (it.target & OnScreen) != 0;
}

// The vertical extent of every row, from the items the walk drew on it; items of no row
// (measure numbers, the title) join the first row that reaches down to them.
std::vector<RowBand> RowBands(const DisplayList& list, std::vector<int>& rowOf) {
    std::vector<RowBand> rows;
    rowOf.assign(list.items.size(), 0);
    for (std::size_t k = 0; k < list.items.size(); ++k) {
        const DisplayItem& it = list.items[k];
        if (it.row <= 0 || !OnScreenTarget(it)) continue;
        if (it.row >= static_cast<int>(rows.size())) rows.resize(it.row + 1);
        RowBand& band = rows[static_cast<std::size_t>(it.row)];
        const double top = TopEdge(it), bottom = BottomEdge(it);
        band.top = band.used ? std::min(band.top, top) : top;
        band.bottom = band.used ? std::max(band.bottom, bottom) : bottom;
        band.used = true;
        rowOf[k] = it.row;
    }
    for (std::size_t k = 0; k < list.items.size(); ++k) {
        const DisplayItem& it = list.items[k];
        if (rowOf[k] != 0 || !OnScreenTarget(it)) continue;
        int row = static_cast<int>(rows.size()) - 1;
        for (int r = 1; r < static_cast<int>(rows.size()); ++r)
            if (rows[static_cast<std::size_t>(r)].used &&
                rows[static_cast<std::size_t>(r)].bottom >= it.y) {
                row = r;
                break;
            }
        if (row < 1) continue;
        RowBand& band = rows[static_cast<std::size_t>(row)];
        band.top = std::min(band.top, TopEdge(it));
        band.bottom = std::max(band.bottom, BottomEdge(it));
        rowOf[k] = row;
    }
    if (rows.size() > 1) rows[1].top = 0; // the title block stays on the first page
    return rows;
}

DisplayItem PageNumber(int number, double width, double height) {
    DisplayItem it;
    it.kind = ItemKind::Text;
    it.font = FontRole::Text;
    it.centred = true;
    it.size = kNumberSize;
    it.x = width / 2;
    it.y = height - kNumberSpace;
    it.text = std::to_string(number);
    return it;
}

} // namespace

const Paper* PaperNamed(std::string_view name) {
    std::string lower(name);
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    for (const Paper* p : {&kA4, &kLetter})
        if (lower == p->name) return p;
    return nullptr;
}

LayoutOptions PaperLayoutOptions(LayoutOptions options, const Paper& paper) {
    options.ViewMode = View::Page;
    options.PicWidthTwips = paper.widthMm * kTwipsPerMm;
    options.PageWidthUnits = 0;
    options.ChPrint = false;
    return options;
}

PagedLayout LayOutPages(const core::ScoreSheet& sheet, const LayoutOptions& options,
                        const PageOptions& pages) {
    PagedLayout out;
    out.layout = RefreshView(sheet, PaperLayoutOptions(options, pages.paper));
    const double unitTwips = ScreenUnit * out.layout.ZoomFactor;
    out.pages = CutIntoPages(out.layout.list, pages.paper.heightMm * kTwipsPerMm / unitTwips,
                             pages);
    return out;
}

std::vector<PrintedPage> CutIntoPages(const DisplayList& list, double heightUnits,
                                      const PageOptions& options) {
    std::vector<int> rowOf;
    const std::vector<RowBand> rows = RowBands(list, rowOf);
    const double foot = heightUnits - options.bottomMargin - kNumberSpace;
    // Page of each row and the shift that moves the page's first row to its top.
    std::vector<int> pageOf(rows.size(), 0);
    std::vector<double> shiftOf(rows.size(), 0);
    int page = 0;
    double shift = 0;
    bool empty = true;
    for (std::size_t r = 1; r < rows.size(); ++r) {
        if (!rows[r].used) continue;
        if (!empty && rows[r].bottom + shift > foot) {
            ++page;
            empty = true;
        }
        if (empty) shift = page == 0 ? 0 : options.pageTop - rows[r].top;
        empty = false;
        pageOf[r] = page;
        shiftOf[r] = shift;
    }
    std::vector<PrintedPage> pages(static_cast<std::size_t>(page) + 1);
    for (std::size_t k = 0; k < list.items.size(); ++k) {
        const int row = rowOf[k];
        if (row <= 0) continue;
        const auto r = static_cast<std::size_t>(row);
        DisplayItem it = list.items[k];
        it.y += shiftOf[r];
        if (it.kind == ItemKind::Stroke) it.y2 += shiftOf[r];
        it.target = OnScreen;
        pages[static_cast<std::size_t>(pageOf[r])].list.items.push_back(std::move(it));
    }
    for (std::size_t p = 0; p < pages.size(); ++p) {
        pages[p].number = static_cast<int>(p) + 1;
        pages[p].list.widthUnits = list.widthUnits;
        pages[p].list.heightUnits = heightUnits;
        pages[p].list.items.push_back(PageNumber(pages[p].number, list.widthUnits, heightUnits));
    }
    return pages;
}

} // namespace tahrir::render
