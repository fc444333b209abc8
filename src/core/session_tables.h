#pragma once
// The fixed tables a session fills at start: instruments, chord names and palette hints.

#include <array>
#include <string_view>

namespace tahrir::core {

// One entry of the instrument list: its name and its General MIDI program (1-based).
struct Instrument {
    std::string_view name;
    int program;
};

inline constexpr int PaletteHintCount = 81;

// The eight instruments of `InsList`, in list order.
const std::array<Instrument, 8>& InstrumentTable();

// The hint shown over each palette key, indexed like the palette (UTF-8; unused keys empty).
const std::array<std::string_view, PaletteHintCount>& PaletteHintTable();

} // namespace tahrir::core
