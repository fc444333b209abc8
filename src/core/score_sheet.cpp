#include "core/score_sheet.h"

#include <algorithm>

namespace tahrir::core {

SheetIndexError::SheetIndexError(int index)
    : std::out_of_range("score line index " + std::to_string(index) + " is outside 0.." +
                        std::to_string(MaxLines)),
      m_index(index) {}

ScoreSheet::ScoreSheet() = default;

ScoreLine& ScoreSheet::operator[](int index) {
    if (index < 0 || index > MaxLines) throw SheetIndexError(index);
    return m_lines[static_cast<std::size_t>(index)];
}

const ScoreLine& ScoreSheet::operator[](int index) const {
    if (index < 0 || index > MaxLines) throw SheetIndexError(index);
    return m_lines[static_cast<std::size_t>(index)];
}

void ScoreSheet::setLine(int index, std::string text) { (*this)[index] = ScoreLine(std::move(text)); }

bool ScoreSheet::insertLine(int at, std::string text) {
    if (LastLine >= MaxLines || at < 1 || at > LastLine + 1) return false;
    auto first = m_lines.begin() + at;
    auto last = m_lines.begin() + LastLine + 1;
    std::move_backward(first, last, last + 1);
    m_lines[static_cast<std::size_t>(at)] = ScoreLine(std::move(text));
    ++LastLine;
    return true;
}

void ScoreSheet::removeLines(int at, int count) {
    if (at < 1 || count <= 0 || at > LastLine) return;
    count = std::min(count, LastLine - at + 1);
    auto first = m_lines.begin() + at;
    auto end = m_lines.begin() + LastLine + 1;
    std::move(first + count, end, first);
    LastLine -= count;
}

void ScoreSheet::fill(const std::string& text) {
    for (auto& line : m_lines) line = ScoreLine(text);
    LastLine = 0;
}

} // namespace tahrir::core
