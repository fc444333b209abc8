#include "render/page_layout.h"

#include <algorithm>
#include <cmath>

#include "core/cp1256.h"
#include "core/line_kind.h"
#include "render/page_walk.h"
#include "render/text_util.h"

namespace tahrir::render {

std::vector<std::string> DescriptionPieces(std::string_view text) {
    std::vector<std::string> pieces;
    while (!text.empty()) {
        const auto cut = text.find('\n');
        std::string piece(text.substr(0, cut));
        if (!piece.empty() && piece.back() == '\r') piece.pop_back();
        pieces.push_back(std::move(piece));
        if (cut == std::string_view::npos) break;
        text.remove_prefix(cut + 1);
    }
    return pieces;
}

bool IsFinLine(std::string_view s) {
    if (Upper(s, 5) == "LCFIN") return true;
    return s.size() > 2 && s[0] == 'L' && Trim(s.substr(2)) == "FIN";
}

double RowScaleFor(double r) {
    double scale = 1;
    if (r >= 0.6 && r < 2) {
        scale = 1 / r;
    } else if (r >= 0.5 && r < 0.6) {
        scale = 1 / (r * 1.5);
    } else if (r > 0.3 && r < 0.5) {
        scale = 1 / (r * 1.9);
    }
    return scale == 0 ? 1 : scale;
}

LayoutResult RefreshView(const core::ScoreSheet& sheet, const LayoutOptions& options) {
    LayoutResult out;
    PageWalk walk(sheet, options, out);
    walk.run();
    return out;
}

PageWalk::PageWalk(const core::ScoreSheet& sheet, const LayoutOptions& options,
                   LayoutResult& out)
    : m_sheet(sheet), m_opt(options), m_out(out) {
    for (auto& s : m_padded) s.reserve(40);
}

void PageWalk::run() {
    LastLine = std::clamp(m_sheet.LastLine, 0, core::MaxLines);
    LeftMargin = m_opt.LeftMargin;
    TopMargin = m_opt.TopMargin;
    StaffGap = m_opt.StaffGap;
    TextFontName = m_opt.TextFontName;
    ZoomFactor = m_opt.ZoomBase / 5;
    if (ZoomFactor <= 0) ZoomFactor = 0.6;
    const double picWidth = m_opt.ChPrint ? m_opt.PrinterWidthTwips : m_opt.PicWidthTwips;
    PageWidthUnits = m_opt.PageWidthUnits > 0
                         ? m_opt.PageWidthUnits
                         : picWidth / ZoomFactor / ScreenUnit - m_opt.RightMargin;
    if (PageWidthUnits <= 0 || PageWidthUnits > 500) PageWidthUnits = 100;
    // The picture's width in staff units: a page width given outright stands for it.
    PicWidthUnits = m_opt.PageWidthUnits > 0 ? PageWidthUnits + m_opt.RightMargin
                                             : picWidth / ZoomFactor / ScreenUnit;
    FillLimit = m_opt.ViewMode == 0 ? 1.0 : 0.9;
    Passes = m_opt.ViewMode == 0 ? 2 : 1;
    m_dxf.setEnabled(m_opt.DxfEnabled);
    m_out.RowRatios.assign(201, 0.0);
    // About eight items a line: growing the list item by item would copy it many times.
    m_out.list.items.reserve(static_cast<std::size_t>(LastLine) * 8 + 64);
    m_rowFit.assign(202, 1.0);

    const int outerRounds = m_opt.ChPrint ? 2 : 1;
    for (Outer = 1; Outer <= outerRounds; ++Outer) {
        for (RenderPass = 1; RenderPass <= Passes; ++RenderPass) {
            Paint = RenderPass == Passes;
            PrintActive = m_opt.ChPrint && Outer == 2 && RenderPass == 2;
            runPass();
        }
    }
    fitRowsToStaffEnd();
    liftTexts();
    m_currentLine = 0;
    descriptionLines();
    m_out.staffEnd = PageWidthUnits;
    m_out.dxf = m_dxf.contents();
    m_out.rows = RowIndex;
    m_out.PageWidthUnits = PageWidthUnits;
    m_out.ZoomFactor = ZoomFactor;
    m_out.ElapsedSeconds = ElapsedSeconds;
    m_out.MeasureNumber = MeasureNumber;
    m_out.TextFontName = TextFontName;
    m_out.printed = m_opt.ChPrint && Passes == 2;
    emitMeasureLabels();
    m_out.printWidthUnits = m_opt.PrinterWidthTwips / (PrintUnit * ZoomFactor);
    m_out.printHeightUnits = m_opt.PrinterHeightTwips / (PrintUnit * ZoomFactor);
    m_out.list.widthUnits = PageWidthUnits + m_opt.RightMargin;
    m_out.list.heightUnits = StaffGap + StaffBaseY;
}

// The score's description above the page, centred, one text a line, at half the size.
void PageWalk::descriptionLines() {
    double y = 2;
    for (const std::string& piece : DescriptionPieces(m_opt.Description)) {
        if (!Trim(piece).empty()) {
            text(0, (PageWidthUnits + m_opt.RightMargin) / 2, y,
                 core::Cp1256ToUtf8(Trim(piece)), 0.5, OnScreen);
            m_out.list.items.back().centred = true;
            m_out.list.items.back().row = 0; // the title block stands above every row
        }
        y += 3;
    }
}

std::string_view PageWalk::line(int i) const {
    auto& buf = const_cast<std::string&>(m_padded[m_padSlot]);
    m_padSlot ^= 1;
    buf.clear();
    if (i >= 0 && i <= LastLine) buf = m_sheet[i].text().substr(0, core::RecordLength);
    buf.resize(core::RecordLength, ' ');
    return buf;
}

// A barline record draws nothing in page view, so the look-ahead passes over it.
int PageWalk::nextIndex(int i) const {
    int k = i + 1;
    while (k <= LastLine) {
        const std::string& t = m_sheet[k].text();
        if (!(t.size() >= 5 && t[0] == '0' && t.compare(2, 3, " -1") == 0)) break;
        ++k;
    }
    return k;
}

int PageWalk::ticksOf(int i) const {
    const RhythmFields f = SplitRhythm(line(i));
    if (f.numerator.empty() || f.denominator.empty()) return 0;
    const double num = Val(f.numerator), den = Val(f.denominator);
    if (num == 0 || den == 0) return 0;
    return static_cast<int>(std::floor(num / den * 32));
}

void PageWalk::takeRowScale() {
    if (RenderPass == 1) {
        RowScale = 1;
        return;
    }
    const double r = RowIndex < static_cast<int>(m_out.RowRatios.size())
                         ? m_out.RowRatios[RowIndex]
                         : 0.0;
    const double fit = RowIndex < static_cast<int>(m_rowFit.size()) ? m_rowFit[RowIndex] : 1.0;
    RowScale = RowScaleFor(r) * fit;
}

void PageWalk::storeRowRatio() {
    if (RowIndex >= static_cast<int>(m_out.RowRatios.size()))
        m_out.RowRatios.resize(RowIndex + 1, 0.0);
    m_out.RowRatios[RowIndex] = PageWidthUnits / PenX != 1 ? PenX / PageWidthUnits : RowScale;
}

// Line 2: the row start and the tempo mark, as the stored tempo asks. A value of -2 draws
// nothing, -5 the row start alone; a tempo of 0 or 5 draws no row start.
void PageWalk::headerTempo() {
    const bool tempoLine = Upper(line(2), 5) == "TEMPO";
    const double v = tempoLine ? Val(line(2).substr(5, 4)) : m_opt.StoredTempo;
    ActiveTempo = v != 0 ? std::abs(v) : 60;
    const double scale = RowScale;
    RowScale = 1;
    if (v > 0 && v != 5) StartStaffRow();
    if (tempoLine && v < 0 && v != -2) StartStaffRow();
    RowScale = scale;
    DxfLayer = "2";
    PenX += 0.8 * RowScale;
    if (tempoLine && v != -2 && v != -5) {
        const double keep = PenX;
        DxfLayer = "3";
        tempoMark(2);
        PenX = keep;
    }
}

void PageWalk::startOfPass() {
    if (RenderPass == 1) m_rowDecisions.clear();
    m_decision = 0;
    MeasureNumber = 0;
    DxfBaseY = 0;
    StaffBaseY = TopMargin;
    m_dxf.begin(PageWidthUnits, m_opt.ScoreFileName);
    RowIndex = 1;
    if (RenderPass == 1) m_out.RowRatios[1] = 1;
    takeRowScale();
    PenX = LeftMargin;
    GlyphY = 0;
    const std::string_view header = line(1);
    for (int step = 1; step <= 7; ++step) KeySignature[step] = header[step - 1];
    ClefLetter = header[7] == 'F' ? 'F' : 'G';
    DxfLayer = "1";
    Beam.clear();
    GroupOpen = false;
    GroupBroken = false;
    RhythmLine = 3;

    headerTempo();
    TextFontScale = 1;
    MeasureNumberScale = 1;

    MeasureTicks = 0;
    if (core::IsRhythmLine(Upper(line(3), 6))) {
        MeasureTicks = ticksOf(3);
        drawTimeSignature(3);
    }
    if (m_opt.ViewMode == 1) {
        setPos(3, PenX, StaffBaseY - 6.5);
        glyph(3, PenX, StaffBaseY - 6.5, "0");
    }
    placeMeasureLabel(1, PenX - 1.2, StaffBaseY - 6.5, true);
    MeasureFill = 0;
    MeasureNumber = 0;
    BarStartX = 0;
    LastBarWidth = 0;
    ElapsedSeconds = 0;
    StemDir = StemDirection::Blank;
}

void PageWalk::fitRowsToStaffEnd() {
    if (Passes < 2) return;
    constexpr int kRounds = 10;
    constexpr double kMinFit = 0.2;
    for (int round = 0; round < kRounds; ++round) {
        bool over = false;
        for (std::size_t r = 1; r < m_rowRight.size() && r < m_rowStart.size(); ++r) {
            const double span = m_rowRight[r] - m_rowStart[r];
            const double room = PageWidthUnits - m_rowStart[r];
            if (m_rowRight[r] <= PageWidthUnits + 1e-6 || span <= 0 || room <= 0) continue;
            if (r >= m_rowFit.size()) m_rowFit.resize(r + 1, 1.0);
            m_rowFit[r] = std::max(kMinFit, m_rowFit[r] * room / span * 0.99);
            over = true;
        }
        if (!over) return;
        RenderPass = Passes;
        Paint = true;
        PrintActive = m_opt.ChPrint;
        runPass();
    }
}

void PageWalk::runPass() {
    if (Paint) {
        m_out.list.clear();
        m_out.measures.clear();
        m_out.LineRight.assign(core::MaxLines + 1, -1.0);
        m_rowRight.assign(2, 0.0);
        m_rowStart.assign(2, 0.0);
    }
    m_currentLine = 0;
    startOfPass();
    if (Paint) m_rowStart[1] = RowStartX + 2;
    if (PrintActive) {
        // Title lines of the description, centred on the printed page.
        const double printWidth = m_opt.PrinterWidthTwips / (PrintUnit * ZoomFactor);
        double y = 0;
        for (const std::string& piece : DescriptionPieces(m_opt.Description)) {
            const std::string shown = piece.empty() ? std::string(1, ' ') : piece;
            const double x = printWidth / 2 - static_cast<double>(shown.size()) * 0.5;
            text(0, x, y, core::Cp1256ToUtf8(shown), 0.5, OnPrint);
            y += 3;
        }
    }
    for (int i = 4; i <= LastLine; ++i) {
        if (line(i).substr(0, 3) == "END") break;
        walkLine(i);
    }
    DrawBeamGroup();
    DxfLayer = "3";
    PenX -= 1;
    m_dxf.polyline(DxfLayer, PenX, DxfBaseY, PenX, DxfBaseY + 4);
    m_dxf.polyline(DxfLayer, PenX, StaffBaseY, PenX, StaffBaseY + 4);
    m_dxf.end();
}

void PageWalk::walkLine(int i) {
    m_currentLine = i;
    m_out.positions.LinePosX[i] = -1;
    const std::string s(line(i));
    takeRowScale();
    const std::string up = Upper(s, 6);
    if (s.starts_with("REP{")) {
        DxfLayer = "3";
        glyph(i, PenX - 0.2 * RowScale - 2, StaffBaseY - 5.5, "]");
        setPos(i, PenX, StaffBaseY);
        PenX += 2 * RowScale;
    }
    if (!s.starts_with("REP{") && !s.starts_with("REP}")) {
        if (up.starts_with("TEMPO")) {
            DxfLayer = "3";
            const double keep = PenX;
            tempoMark(i);
            PenX = keep;
        } else if (core::IsRhythmLine(up)) {
            MeasureTicks = ticksOf(i);
            RhythmLine = i;
            drawTimeSignature(i);
            takeRowScale();
        }
        ChordX = PenX;
        ChordY = GlyphY + 6.5;
        // "LC" lines fold to upper case, so "Lc" is a control line as well.
        const core::LineKind kind =
            up.starts_with("LC") ? core::LineKind::ControlLine : core::ClassifyLine(s, i);
        switch (kind) {
        case core::LineKind::SpacerLine:
            if (m_opt.ViewMode == 1) {
                glyph(i, PenX + 2.5 * RowScale, StaffBaseY - 6.5, "/");
                PenX += 4.5 * RowScale;
            } else {
                PenX += RowScale;
                StemDir = StemDirection::Blank;
            }
            break;
        case core::LineKind::ControlLine: controlLine(i); break;
        case core::LineKind::TextLine: textLine(i); break;
        case core::LineKind::NoteLine:
        case core::LineKind::BarLine: noteLine(i); break;
        case core::LineKind::DirectiveLine: directiveLine(i); break;
        default: break;
        }
        measureTest(i);
    }
    chordSymbol(i);
}

void PageWalk::controlLine(int i) {
    const std::string_view s = line(i);
    const std::string key = Upper(s.substr(2), 4);
    const double v = Val(s.substr(6, 4));
    if (key == "TFS=" && v > 0 && v <= 2) TextFontScale = v;
    if (key == "MFS=" && v > 0 && v <= 2) MeasureNumberScale = v;
    if (key == "FON=") {
        const std::string_view name = Trim(s.substr(6));
        TextFontName = Trim(s.substr(6, 22)).empty() ? m_opt.TextFontName
                                                       : core::Cp1256ToUtf8(name);
    }
    if (key == "LFT=" && v >= 0 && v <= 90) {
        LeftMargin = v == 0 ? 3 : v * PicWidthUnits / 100; // a percentage of the picture
    }
    if (key == "TOP=") {
        if (v == 0) TopMargin = 26;
        if (v > 0 && v <= 100) TopMargin = v;
    }
    if (key == "DBL=") {
        if (v == 0) StaffGap = 14;
        if (v > 0 && v <= 100) StaffGap = v;
    }
    if (m_opt.ViewMode == 1) {
        glyph(i, PenX, StaffBaseY - 7.5, "C");
        setPos(i, PenX, StaffBaseY);
        PenX += 1.5 * RowScale;
    }
}

} // namespace tahrir::render
