#pragma once
// The palette read-out of the line under the cursor: which keys are lit.

#include <bitset>
#include <string_view>

#include "edit/palette.h"

namespace tahrir::edit {

using LitSet = std::bitset<PaletteEntries>;

// Recomputes the lit entries for `line` by each entry's `lighting`; the clipboard entries
// keep their state from `before`.
LitSet ShowLineState(std::string_view line, const LitSet& before = {});

// Scale step 1..7 of a note line (the syllable to sing), 0 for anything else.
int SyllableStep(std::string_view line);

} // namespace tahrir::edit
