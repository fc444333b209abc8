#include "core/instrument_table.h"

namespace tahrir::core {

const std::array<Instrument, InstrumentCount>& InstrumentTable() {
    static constexpr std::array<Instrument, InstrumentCount> table = {{
        {"Acoustic Grand Piano", 1, 3},
        {"Music Box", 11, 1},
        {"Draw Organ", 17, 4},
        {"Viola", 42, 5},
        {"Oboe", 69, 7},
        {"Flute", 74, 6},
        {"Banjo", 106, 2},
        {"Koto", 108, 0},
    }};
    return table;
}

const Instrument* InstrumentAt(int programIndex) {
    if (programIndex < 1 || programIndex > InstrumentCount) return nullptr;
    return &InstrumentTable()[static_cast<std::size_t>(programIndex - 1)];
}

std::optional<int> ProgramIndexOfButton(int button) {
    const auto& table = InstrumentTable();
    for (std::size_t row = 0; row < table.size(); ++row)
        if (table[row].button == button) return static_cast<int>(row) + 1;
    return std::nullopt;
}

int ProgramByte(int programIndex) {
    const Instrument* instrument = InstrumentAt(programIndex);
    return instrument ? instrument->program - 1 : 0;
}

} // namespace tahrir::core
