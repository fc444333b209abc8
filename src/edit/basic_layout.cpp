#include "edit/basic_layout.h"

#include <charconv>

#include "core/line_kind.h"

namespace tahrir::edit {

namespace {

int NumberAt(std::string_view text, std::size_t from, std::size_t* end) {
    int value = 0;
    const char* first = text.data() + std::min(from, text.size());
    const auto [ptr, ec] = std::from_chars(first, text.data() + text.size(), value);
    *end = static_cast<std::size_t>(ptr - text.data());
    return ec == std::errc() ? value : 0;
}

std::string FirstWord(std::string_view text) {
    const auto end = text.find(' ');
    return std::string(text.substr(0, end));
}

} // namespace

// The payload is read from column 6 whatever the spelling, as drawing does.
int MeasureTicksOf(std::string_view line) {
    std::size_t end = 0;
    const int numerator = NumberAt(line, 5, &end);
    if (numerator <= 0 || end >= line.size() || line[end] != '/') return 0;
    const int denominator = NumberAt(line, end + 1, &end);
    if (denominator <= 0) return 0;
    return numerator * 32 / denominator;
}

LayoutFacts BasicLayout::relayout(const core::ScoreSheet& sheet, core::PositionTable& positions) {
    LayoutFacts facts;
    facts.lineMeasure.assign(core::SheetSize, 0);
    const int last = sheet.LastLine;
    int ticks = last >= 3 ? MeasureTicksOf(sheet[3].text()) : 0;
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
            ticks = MeasureTicksOf(text);
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
        fill += core::DurationTicks(sheet[i].field(3, 3)).value_or(0);
        if (ticks > 0 && fill >= ticks) {
            ++measure;
            fill = 0;
        }
    }
    facts.measureCount = fill > 0 || measure == 1 ? measure : measure - 1;
    return facts;
}

} // namespace tahrir::edit
