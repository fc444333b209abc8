#pragma once
// The renderer as the editor's layout service: each relayout keeps the display list that
// the score view paints, and counts itself so the view knows when to repaint the page.

#include "app/render_layout.h"

namespace tahrir::ui {

class ViewLayout : public app::RenderLayout {
public:
    edit::LayoutFacts relayout(const core::ScoreSheet& sheet, core::PositionTable& positions) override;
    // Lays out a copy of the sheet with the pen standing in for line `line`, so that the
    // red note shows what is typed before it is stored. The positions stay those of the
    // sheet itself.
    const render::LayoutResult& penResult(const core::ScoreSheet& sheet, int line);
    bool penShown() const { return m_penShown; }
    // What the view paints: the pen's layout while one is shown, else the sheet's.
    const render::LayoutResult& current() const { return m_penShown ? m_pen : m_result; }
    void dropPen() { m_penShown = false; }
    // Grows by one with every relayout of the sheet.
    int generation() const { return m_generation; }
    // Staff units to device pixels at the current zoom (15 twips a pixel).
    double pixelsPerUnit() const;

private:
    render::LayoutResult m_pen;
    bool m_penShown = false;
    int m_generation = 0;
};

} // namespace tahrir::ui
