#include "app/render_layout.h"

#include "core/line_kind.h"

namespace tahrir::app {

edit::LayoutFacts FactsOf(const core::ScoreSheet& sheet, const render::LayoutResult& result,
                          const render::LayoutOptions& options) {
    edit::LayoutFacts facts;
    // The last measure is the last one whose number is shown: the label after a closing
    // barline with nothing behind it stays hidden and is no measure to choose.
    facts.measureCount = 1;
    for (const render::MeasureLabel& label : result.measures)
        if (label.visible && label.number > facts.measureCount) facts.measureCount = label.number;
    facts.leftMargin = options.LeftMargin;
    // The last rhythm word of the score is what a new rhythm line starts from.
    for (int i = 3; i <= sheet.LastLine; ++i) {
        const std::string& text = sheet[i].text();
        if (core::IsRhythmLine(text)) facts.rhythmWord = text.substr(0, text.find(' '));
    }
    return facts;
}

edit::LayoutFacts RenderLayout::relayout(const core::ScoreSheet& sheet,
                                         core::PositionTable& positions) {
    m_result = render::RefreshView(sheet, m_options);
    positions = m_result.positions;
    return FactsOf(sheet, m_result, m_options);
}

} // namespace tahrir::app
