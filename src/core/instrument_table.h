#pragma once
// The instruments: one table read by the picture buttons, the instrument list, the
// "LCINS=" directive and the MIDI export alike.

#include <array>
#include <optional>
#include <string_view>

namespace tahrir::core {

// One instrument of `InsList`: its name, its General MIDI program (1-based) and the
// picture button (`InsImage` index) that chooses it.
struct Instrument {
    std::string_view name;
    int program;
    int button;
};

inline constexpr int InstrumentCount = 8;

// The instruments in list order; a `ProgramIndex` is a list row plus 1.
const std::array<Instrument, InstrumentCount>& InstrumentTable();

// The instrument of `ProgramIndex` 1..8; nullptr outside.
const Instrument* InstrumentAt(int programIndex);

// The `ProgramIndex` chosen by picture button 0..7; nullopt for any other button.
std::optional<int> ProgramIndexOfButton(int button);

// The General MIDI program byte (0-based) of `ProgramIndex` 1..8; 0 outside.
int ProgramByte(int programIndex);

} // namespace tahrir::core
