#pragma once
// Printed pages: the page view laid out to the paper's width and cut into pages of whole
// rows, the title block on the first, a page number on every one.

#include <string_view>
#include <vector>

#include "render/page_layout.h"

namespace tahrir::render {

struct Paper {
    const char* name;
    double widthMm, heightMm;
};

inline constexpr Paper kA4{"a4", 210, 297};
inline constexpr Paper kLetter{"letter", 215.9, 279.4};

// The paper of a name ("a4", "letter", any case); nullptr for another name.
const Paper* PaperNamed(std::string_view name);

struct PageOptions {
    Paper paper = kA4;
    double pageTop = 6;     // staff units above the first row of every page but the first
    double bottomMargin = 4; // staff units kept free at the foot, above the page number
};

// One printed page: its own display list in staff units, the paper's size.
struct PrintedPage {
    DisplayList list;
    int number = 1;
};

struct PagedLayout {
    LayoutResult layout;           // the whole score as one long page at the paper's width
    std::vector<PrintedPage> pages; // whole rows on each
};

// The options of a page view at the paper's width (the picture is the paper).
LayoutOptions PaperLayoutOptions(LayoutOptions options, const Paper& paper);

// Lays the score out at the paper's width and cuts it into pages.
PagedLayout LayOutPages(const core::ScoreSheet& sheet, const LayoutOptions& options,
                        const PageOptions& pages);

// Cuts a laid-out page view into pages of `heightUnits` each.
std::vector<PrintedPage> CutIntoPages(const DisplayList& list, double heightUnits,
                                      const PageOptions& options);

} // namespace tahrir::render
