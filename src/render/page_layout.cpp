#include "render/page_layout.h"

#include <algorithm>
#include <cmath>

#include "core/cp1256.h"
#include "core/line_kind.h"
#include "render/page_walk.h"
#include "core/line_view.h"
#include "core/text_input.h"
#include "render/dxf_writer.h"

namespace tahrir::render {

namespace {
// Engraving distances of the walk's own lines, staff units.
constexpr double kHeaderGap = 0.8;        // after the row start of line 2
constexpr double kMarkLineDrop = 6.5;     // marks of the working view over the staff base
constexpr double kRepeatStartLead = 0.2;  // the repeat start stands before the pen
constexpr double kRepeatStartAdvance = 2;
constexpr double kBarGlyphDrop = 5.5;     // bar glyphs ("]", "}", "[") over the staff base
constexpr double kChordDrop = 6.5;        // a chord symbol under the glyph pen
constexpr double kSpacerMarkX = 2.5;      // the spacer's mark in the working view
constexpr double kSpacerMarkAdvance = 4.5;
constexpr double kControlMarkDrop = 7.5;  // the "C" of a control line in the working view
constexpr double kControlMarkAdvance = 1.5;
constexpr double kFirstNumberLead = 1.2;  // the first measure's number before the pen
} // namespace

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

bool IsControl(const core::ScoreLine& line, std::string_view keyword) {
    const auto control = core::ControlOf(line);
    return control && control->keyword == keyword;
}

bool IsFinLine(const core::ScoreLine& line) {
    if (IsControl(line, "FIN")) return true;
    return line.startsWith("L") && core::Trim(core::LineText(line)) == "FIN";
}

std::optional<double> TempoOfFolded(const core::ScoreLine& line) {
    if (!core::IsTempoLine(core::UpperAscii(line.text()))) return std::nullopt;
    core::ScoreLine upper = line;
    upper.setField(1, "TEMPO");
    return core::TempoOf(upper);
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
    : m_sheet(sheet), m_opt(options), m_out(out), m_blank(core::Scratch("")) {}

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
    FillLimit = m_opt.ViewMode == View::Page ? 1.0 : 0.9;
    Passes = m_opt.ViewMode == View::Page ? 2 : 1;
    m_out.list.dxf.enabled = m_opt.DxfEnabled;
    m_out.list.dxf.title = m_opt.ScoreFileName;
    m_lines.resize(static_cast<std::size_t>(LastLine) + 1);
    for (int i = 0; i <= LastLine; ++i)
        m_lines[static_cast<std::size_t>(i)] = core::ScoreLine(core::Scratch(m_sheet[i].text()));
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
    m_out.dxf = WriteDxf(m_out.list);
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
        if (!core::Trim(piece).empty()) {
            text(0, (PageWidthUnits + m_opt.RightMargin) / 2, y,
                 core::Cp1256ToUtf8(core::Trim(piece)), 0.5, OnScreen);
            m_out.list.items.back().centred = true;
            m_out.list.items.back().row = 0; // the title block stands above every row
        }
        y += 3;
    }
}

const core::ScoreLine& PageWalk::line(int i) const {
    if (i < 0 || i >= static_cast<int>(m_lines.size())) return m_blank;
    return m_lines[static_cast<std::size_t>(i)];
}

// A barline record draws nothing in page view, so the look-ahead passes over it.
int PageWalk::nextIndex(int i) const {
    int k = i + 1;
    while (k <= LastLine) {
        if (core::ClassifyLine(line(k).text(), k) != core::LineKind::BarLine) break;
        ++k;
    }
    return k;
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
    const std::optional<double> tempo = TempoOfFolded(line(2));
    const bool tempoLine = tempo.has_value();
    const double v = tempo.value_or(m_opt.StoredTempo);
    ActiveTempo = v != 0 ? std::abs(v) : 60;
    const double scale = RowScale;
    RowScale = 1;
    if (v > 0 && v != 5) StartStaffRow();
    if (tempoLine && v < 0 && v != -2) StartStaffRow();
    RowScale = scale;
    DxfLayer = "2";
    PenX += kHeaderGap * RowScale;
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
    m_out.list.dxf.titleX = PageWidthUnits / 2 - 6;
    RowIndex = 1;
    if (RenderPass == 1) m_out.RowRatios[1] = 1;
    takeRowScale();
    PenX = LeftMargin;
    GlyphY = 0;
    KeySignature = core::HeaderKeyLetters(line(1));
    ClefLetter = core::HeaderClef(line(1));
    DxfLayer = "1";
    Beam.clear();
    GroupOpen = false;
    GroupBroken = false;
    RhythmLine = 3;

    headerTempo();
    TextFontScale = 1;
    MeasureNumberScale = 1;

    MeasureTicks = 0;
    if (core::IsRhythmLine(core::UpperAscii(line(3).text()))) {
        MeasureTicks = core::MeasureTicksOfLine(line(3));
        drawTimeSignature(3);
    }
    if (m_opt.ViewMode == View::Working) {
        setPos(3, PenX, StaffBaseY - kMarkLineDrop);
        glyph(3, PenX, StaffBaseY - kMarkLineDrop, "0");
    }
    placeMeasureLabel(1, PenX - kFirstNumberLead, StaffBaseY - kMarkLineDrop, true);
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
        if (line(i).startsWith("END")) break;
        walkLine(i);
    }
    DrawBeamGroup();
    DxfLayer = "3";
    PenX -= 1;
    dxfPolyline(DxfLayer, PenX, DxfBaseY, PenX, DxfBaseY + 4);
    dxfPolyline(DxfLayer, PenX, StaffBaseY, PenX, StaffBaseY + 4);
}

void PageWalk::walkLine(int i) {
    m_currentLine = i;
    m_out.positions.LinePosX[i] = -1;
    const core::ScoreLine& l = line(i);
    takeRowScale();
    if (l.startsWith("REP{")) {
        DxfLayer = "3";
        glyph(i, PenX - kRepeatStartLead * RowScale - 2, StaffBaseY - kBarGlyphDrop, "]");
        setPos(i, PenX, StaffBaseY);
        PenX += kRepeatStartAdvance * RowScale;
    }
    if (!l.startsWith("REP{") && !l.startsWith("REP}")) {
        if (TempoOfFolded(l)) {
            DxfLayer = "3";
            const double keep = PenX;
            tempoMark(i);
            PenX = keep;
        } else if (core::IsRhythmLine(core::UpperAscii(l.text()))) {
            MeasureTicks = core::MeasureTicksOfLine(l);
            RhythmLine = i;
            drawTimeSignature(i);
            takeRowScale();
        }
        ChordX = PenX;
        ChordY = GlyphY + kChordDrop;
        // "LC" lines fold to upper case, so "Lc" is a control line as well.
        const core::LineKind kind = core::ControlOf(l) ? core::LineKind::ControlLine
                                                       : core::ClassifyLine(l.text(), i);
        switch (kind) {
        case core::LineKind::SpacerLine:
            if (m_opt.ViewMode == View::Working) {
                glyph(i, PenX + kSpacerMarkX * RowScale, StaffBaseY - kMarkLineDrop, "/");
                PenX += kSpacerMarkAdvance * RowScale;
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
    const auto control = core::ControlOf(line(i));
    if (!control) return;
    // The keyword counts only with its "=" in column 6.
    const std::string head = core::UpperAscii(core::LineText(line(i)));
    const auto is = [&](std::string_view key) { return head.starts_with(key); };
    const double v = control->number(4);
    if (is("TFS=") && v > 0 && v <= 2) TextFontScale = v;
    if (is("MFS=") && v > 0 && v <= 2) MeasureNumberScale = v;
    if (is("FON=")) {
        const std::string_view name = core::Trim(control->text);
        TextFontName = name.empty() ? m_opt.TextFontName : core::Cp1256ToUtf8(name);
    }
    if (is("LFT=") && v >= 0 && v <= 90) {
        LeftMargin = v == 0 ? 3 : v * PicWidthUnits / 100; // a percentage of the picture
    }
    if (is("TOP=")) {
        if (v == 0) TopMargin = 26;
        if (v > 0 && v <= 100) TopMargin = v;
    }
    if (is("DBL=")) {
        if (v == 0) StaffGap = 14;
        if (v > 0 && v <= 100) StaffGap = v;
    }
    if (m_opt.ViewMode == View::Working) {
        glyph(i, PenX, StaffBaseY - kControlMarkDrop, "C");
        setPos(i, PenX, StaffBaseY);
        PenX += kControlMarkAdvance * RowScale;
    }
}

} // namespace tahrir::render
