// The measure test, row breaks, barlines and measure numbers of the walk.

#include <algorithm>

#include "render/page_walk.h"
#include "core/line_view.h"

namespace tahrir::render {

namespace {
constexpr double kRowNumberX = 1.5; // from the staff's left end
constexpr double kRowNumberY = 9;   // above the bottom line, over the clef's top
constexpr double kFinalBarWidth = 1.0; // the final bar's ink ends on the staff end
constexpr double kBarGlyphDrop = 5.5;   // "[" and "}" over the staff base
constexpr double kFinalBarGap = 0.3;    // from the last stroke to the final bar glyph
constexpr double kRepeatEndBack = 1.2;  // the repeat end stands before the barline
constexpr double kKeyChangeStrokes[] = {0.1, 0.2, 0.3}; // the triple stroke before a key change
} // namespace

void PageWalk::measureTest(int i) {
    const int n1 = nextIndex(i);
    const auto repeatBar = [](const core::ScoreLine& l) {
        return l.startsWith("REPB1") || l.startsWith("REPB2");
    };
    const bool repeatBarNext = repeatBar(line(n1)) || repeatBar(line(nextIndex(n1)));
    if (MeasureTicks > 0 && MeasureFill >= MeasureTicks) {
        DxfLayer = "1";
        // Both passes of the page view advance alike, so that the measured width is the
        // drawn one; the working view's single pass keeps its narrower advance.
        const double advance = (Passes > 1 ? 2 : 1.8) * RowScale;
        PenX += advance;
        if (RenderPass == 2) {
            const double r = PenX / PageWidthUnits;
            if (r >= 0.9 && r <= 1) PenX = PageWidthUnits;
        }
        const std::uint32_t colour = MeasureFill > MeasureTicks ? kRed : kBlack;
        ++MeasureNumber;
        DrawBarline(i, repeatBarNext ? -MeasureNumber : MeasureNumber, colour);
        ElapsedSeconds += MeasureFill / 8.0 * 60 / ActiveTempo;
        MeasureFill = 0;
        PenX += advance;
        DxfLayer = "2";
        LastBarWidth = PenX - BarStartX;
        BarStartX = PenX;
    } else if (MeasureTicks == 0) {
        const char beam = core::ReadNote(line(i)).beam;
        if (rowEnds(PenX + 4 * (PenX - BarStartX) >= PageWidthUnits &&
                    (beam == 'c' || beam == ' ')))
            breakRow(true);
        LastBarWidth = PenX - BarStartX;
        BarStartX = PenX;
    } else if (RenderPass == 1 && n1 <= LastLine && nextIndex(n1) > LastLine &&
               PenX > PageWidthUnits) {
        storeRowRatio();
    }
    if (m_opt.ViewMode == View::Working &&
        PenX + 0.2 * (PenX - BarStartX) >= PageWidthUnits * FillLimit) {
        const double ratio = PageWidthUnits / PenX;
        if (ratio != 1) m_out.RowRatios[std::min<std::size_t>(RowIndex, 200)] = ratio;
        breakRow(true);
    }
}

// A row decision: measured in the first of two passes, repeated in the second, so that
// each row holds the music whose width its stretch was taken from. The decisions come in
// the same order in both passes, since where they are taken does not depend on widths.
bool PageWalk::rowEnds(bool measured) {
    if (Passes < 2) return measured;
    if (RenderPass == 1) {
        m_rowDecisions.push_back(measured);
        return measured;
    }
    const std::size_t k = m_decision++;
    return k < m_rowDecisions.size() ? m_rowDecisions[k] : measured;
}

void PageWalk::breakRow(bool showTime) {
    closeBeamAtRowEnd();
    DxfBaseY -= StaffGap;
    StaffBaseY += StaffGap;
    ++RowIndex;
    if (RowIndex >= static_cast<int>(m_out.RowRatios.size()))
        m_out.RowRatios.resize(RowIndex + 1, 0.0);
    PenX = RowStartX + 2 * RowScale;
    markRowStart();
    const double scale = RowScale;
    RowScale = 1;
    StartStaffRow();
    RowScale = scale;
    if (showTime) drawTimeSignature(RhythmLine, true);
}

void PageWalk::markRowStart() {
    if (!Paint) return;
    const auto r = static_cast<std::size_t>(RowIndex);
    if (r >= m_rowStart.size()) m_rowStart.resize(r + 1, 0.0);
    if (r >= m_rowRight.size()) m_rowRight.resize(r + 1, 0.0);
    m_rowStart[r] = RowStartX + 2;
}

// The barline and the row decision of measured music.
void PageWalk::DrawBarline(int i, int number, std::uint32_t colour) {
    const double entry = PenX;
    if (RenderPass == 1) storeRowRatio();
    const int n1 = nextIndex(i);
    const int n2 = nextIndex(n1);
    const core::ScoreLine& next = line(n1);
    const core::ScoreLine& next2 = line(n2);
    barlineStrokes(i, n1, n2, colour);
    const double W = PageWidthUnits * FillLimit;
    // Room for another measure: a tenth of this one, and the width of the one before.
    const bool room = (PenX + 0.1 * (PenX - BarStartX)) / RowScale < W &&
                      (BarStartX + LastBarWidth) / RowScale < W && PenX + 1 < W;
    bool ends = false;
    if (room) {
        // A spacer line is the forced row break of a score.
        ends = next.startsWith("L  ") || (next.startsWith("REP}") && next2.startsWith("L   "));
    } else {
        ends = n2 <= LastLine || PenX + 0.5 > PageWidthUnits;
    }
    ends = rowEnds(ends);
    const bool visible = n1 <= LastLine;
    if (!ends) {
        if (number >= 0) placeMeasureLabel(number + 1, PenX, StaffBaseY - 6.5, visible);
        PenX = entry;
        return;
    }
    // At a row start the number stands over the clef, clear of the key signature.
    if (number >= 0)
        placeMeasureLabel(number + 1, LeftMargin + kRowNumberX, StaffBaseY + StaffGap - kRowNumberY,
                          visible);
    closeBeamAtRowEnd();
    DxfBaseY -= StaffGap;
    StaffBaseY += StaffGap;
    PenX = RowStartX + 4 * RowScale;
    // The new row's staff belongs to it: the row count moves on first.
    ++RowIndex;
    if (RowIndex >= static_cast<int>(m_out.RowRatios.size()))
        m_out.RowRatios.resize(RowIndex + 1, 0.0);
    if (!IsControl(next, "FIN")) {
        const double scale = RowScale;
        RowScale = 1;
        StartStaffRow();
        RowScale = scale;
    }
    markRowStart();
    BarStartX = 0;
    LastBarWidth = 0;
}

// The strokes and signs of a barline: the key-change triple stroke, the final bar or the
// plain one, and the repeat end.
void PageWalk::barlineStrokes(int i, int n1, int n2, std::uint32_t colour) {
    const auto change = core::AllChangeOf(line(n1));
    if (change && change->digit >= 1 && change->digit <= 7) {
        for (double d : kKeyChangeStrokes) stroke(PenX - d, StaffBaseY - 4, PenX - d, StaffBaseY);
    }
    const bool atLast = n1 > LastLine;
    const bool finAfter = n1 <= LastLine && n2 > LastLine && IsFinLine(line(n1));
    if (atLast || finAfter) {
        PenX = std::min(PenX, PageWidthUnits - kFinalBarWidth);
        stroke(PenX, StaffBaseY - 4, PenX, StaffBaseY);
        dxfLine(DxfLayer, PenX, DxfBaseY, PenX, DxfBaseY + 4);
        PenX += kFinalBarGap;
        glyph(i + 1, PenX, StaffBaseY - kBarGlyphDrop, "[");
    } else {
        PenX = std::min(PenX, PageWidthUnits);
        stroke(PenX, StaffBaseY - 4, PenX, StaffBaseY, WidthClass::Normal, colour);
        dxfLine(DxfLayer, PenX, DxfBaseY, PenX, DxfBaseY + 4);
    }
    // The repeat end stands 1.2 before the barline and takes the pen with it: the row
    // decision and a number over the barline start from there.
    if (line(n1).startsWith("REP}") && !line(n2).startsWith("L  ")) {
        PenX -= kRepeatEndBack;
        glyph(0, PenX, StaffBaseY - kBarGlyphDrop, "}");
    }
}

// A measure number goes on its own label: placing a number again moves that label.
void PageWalk::placeMeasureLabel(int number, double x, double y, bool visible) {
    if (!Paint || number <= 0) return;
    if (number >= static_cast<int>(m_out.measures.size()))
        m_out.measures.resize(number + 1);
    m_out.measures[number] = {number, x, y, MeasureNumberScale / 1.8, visible};
}

// The measure labels as they stand after the walk, one item for each.
void PageWalk::emitMeasureLabels() {
    for (const MeasureLabel& m : m_out.measures) {
        if (m.number <= 0) continue;
        DisplayItem it;
        it.kind = ItemKind::MeasureLabel;
        it.x = m.x;
        it.y = m.y;
        it.size = m.size;
        it.font = FontRole::Text;
        it.colour = kBlue;
        it.visible = m.visible;
        it.text = std::to_string(m.number);
        it.target = m_out.printed ? OnBoth : OnScreen;
        m_out.list.items.push_back(std::move(it));
    }
}

} // namespace tahrir::render
