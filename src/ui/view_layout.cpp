#include "ui/view_layout.h"

namespace tahrir::ui {

edit::LayoutFacts ViewLayout::relayout(const core::ScoreSheet& sheet, core::PositionTable& positions) {
    m_penShown = false;
    ++m_generation;
    return RenderLayout::relayout(sheet, positions);
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
