#pragma once
// The grid options that `notes` and `transcribe --tracker modern` share.

#include <optional>

#include "cli/cli_args.h"
#include "transcribe/recording_notes.h"

namespace tahrir::cli {

// --grid, --signature, --base, --koron, --sori; nullopt when one is out of range.
std::optional<transcribe::NotesOptions> ParseNotesOptions(Args& args);

} // namespace tahrir::cli
