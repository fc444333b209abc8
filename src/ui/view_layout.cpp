#include "ui/view_layout.h"

#include "core/line_kind.h"

namespace tahrir::ui {

edit::LayoutFacts ViewLayout::relayout(const core::ScoreSheet& sheet, core::PositionTable& positions) {
    m_result = render::RefreshView(sheet, m_options);
    m_penShown = false;
    ++m_generation;
    positions = m_result.positions;
    edit::LayoutFacts facts;
    facts.measureCount = m_result.MeasureNumber + 1;
    facts.leftMargin = m_options.LeftMargin;
    // The last rhythm word of the score is what a new rhythm line starts from.
    for (int i = 3; i <= sheet.LastLine; ++i) {
        const std::string& text = sheet[i].text();
        if (core::IsRhythmLine(text)) facts.rhythmWord = text.substr(0, text.find(' '));
    }
    return facts;
}

const render::LayoutResult& ViewLayout::penResult(const core::ScoreSheet& sheet, int line) {
    if (line < 1 || line > sheet.LastLine || sheet.PenLine().text() == sheet[line].text()) {
        m_penShown = false;
        return m_result;
    }
    core::ScoreSheet copy = sheet;
    copy[line] = sheet.PenLine();
    m_pen = render::RefreshView(copy, m_options);
    m_penShown = true;
    return m_pen;
}

double ViewLayout::pixelsPerUnit() const {
    const double zoom = m_options.ZoomBase / 5;
    return render::ScreenUnit * zoom / 15.0;
}

} // namespace tahrir::ui
