#pragma once
// The MIDI key of each staff position, the transposition and the starting instrument.

#include <array>
#include <optional>

namespace tahrir::play {

inline constexpr int DefaultPitchBase = 24;
inline constexpr int StepPitchCount = 58;

// MIDI keys of staff positions 1..58 (index = octave * 7 + step), built from a base: the
// base, then each octave's steps at +2, +4, +5, +7, +9, +11, +12 above its first entry.
class StepPitchTable {
public:
    explicit StepPitchTable(int base = DefaultPitchBase) { rebuild(base); }
    void rebuild(int base);
    int base() const { return m_base; }
    // The key at a 1-based index; nullopt outside 1..58.
    std::optional<int> at(int index) const;

private:
    int m_base = DefaultPitchBase;
    std::array<int, StepPitchCount + 1> m_keys{};
};

// The transposition slider runs 12..36 and starts at 24: semitones are value - 24.
inline constexpr int TransposeCentre = 24;

// The button that starts a session: Flute.
inline constexpr int StartInstrumentButton = 6;

} // namespace tahrir::play
