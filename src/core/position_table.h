#pragma once
// Where each line's symbol landed on the page, filled by drawing and read by the editor,
// mouse editing and playback.

#include <array>

#include "core/score_sheet.h"

namespace tahrir::core {

struct PositionTable {
    // Staff units; LinePosX is -1 for a line that drew nothing.
    std::array<double, SheetSize> LinePosX{};
    std::array<double, SheetSize> LinePosY{};

    PositionTable() { clear(); }
    void clear() {
        LinePosX.fill(-1);
        LinePosY.fill(-1);
    }
};

} // namespace tahrir::core
