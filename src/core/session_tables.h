#pragma once
// The chord names: roots in two spellings and the kinds.

#include <array>
#include <string_view>

namespace tahrir::core {

// Chord roots in sharp and in flat spelling, and the chord kinds, by code index.
const std::array<std::string_view, 12>& SharpChordNames();
const std::array<std::string_view, 12>& FlatChordNames();
const std::array<std::string_view, 13>& ChordKindNames();

} // namespace tahrir::core
