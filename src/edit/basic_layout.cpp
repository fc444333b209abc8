#include "edit/basic_layout.h"

#include "core/line_kind.h"
#include "core/line_view.h"

namespace tahrir::edit {

namespace {

std::string FirstWord(std::string_view text) {
    const auto end = text.find(' ');
    return std::string(text.substr(0, end));
}

} // namespace

LayoutFacts BasicLayout::relayout(const core::ScoreSheet& sheet, core::PositionTable& positions) {
    LayoutFacts facts;
    facts.lineMeasure.assign(core::SheetSize, 0);
    const int last = sheet.LastLine;
    int ticks = last >= 3 ? core::MeasureTicksOfLine(sheet[3]) : 0;
    if (last >= 3 && core::IsRhythmLine(sheet[3].text()))
        facts.rhythmWord = FirstWord(sheet[3].text());
    double x = facts.leftMargin + 2;
    double y = TopMargin;
    int measure = 1;
    int fill = 0;
    if (last >= 3) {
        positions.LinePosX[3] = facts.leftMargin;
        positions.LinePosY[3] = y;
    }
    for (int i = 4; i <= last; ++i) {
        const std::string& text = sheet[i].text();
        if (core::IsRhythmLine(text)) {
            ticks = core::MeasureTicksOfLine(sheet[i]);
            facts.rhythmWord = FirstWord(text);
        }
        if (x > m_rowWidth) {
            x = facts.leftMargin + 2;
            y += StaffGap;
        }
        positions.LinePosX[static_cast<std::size_t>(i)] = x;
        positions.LinePosY[static_cast<std::size_t>(i)] = y;
        facts.lineMeasure[static_cast<std::size_t>(i)] = measure;
        x += Advance;
        if (core::ClassifyLine(text) != core::LineKind::NoteLine) continue;
        fill += core::DurationTicks(sheet[i].get(core::NoteField::DurationField)).value_or(0);
        if (ticks > 0 && fill >= ticks) {
            ++measure;
            fill = 0;
        }
    }
    facts.measureCount = fill > 0 || measure == 1 ? measure : measure - 1;
    return facts;
}

} // namespace tahrir::edit
