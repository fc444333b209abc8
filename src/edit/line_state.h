#pragma once
// The palette read-out of the line under the cursor: which keys are lit.

#include <bitset>
#include <string_view>

namespace tahrir::edit {

inline constexpr int PaletteSize = 73;
using LitSet = std::bitset<PaletteSize>;

// Recomputes the lit keys for `line` from the keys lit before: keys 0..67 are derived from
// the line, 58..60, 71 and 72 are always lit, 68..70 (clipboard state) are kept.
LitSet ShowLineState(std::string_view line, const LitSet& before = {});

// Scale step 1..7 of a note line (the syllable to sing), 0 for anything else.
int SyllableStep(std::string_view line);

} // namespace tahrir::edit
