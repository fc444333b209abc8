#pragma once
// A plain layout for when no renderer is wired in: one symbol after another on rows of a
// fixed width, measures counted by their durations. It gives every line a position so
// that the cursor, row moves and bands work the same way.

#include "edit/services.h"

namespace tahrir::edit {

class BasicLayout : public LayoutService {
public:
    explicit BasicLayout(double rowWidth = 60) : m_rowWidth(rowWidth) {}
    LayoutFacts relayout(const core::ScoreSheet& sheet, core::PositionTable& positions) override;

    static constexpr double Advance = 3;   // x of one symbol
    static constexpr double StaffGap = 14; // y from one row to the next
    static constexpr double TopMargin = 26;

private:
    double m_rowWidth;
};

} // namespace tahrir::edit
