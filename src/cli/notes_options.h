#pragma once
// The grid options that `notes` and `transcribe --tracker modern` share.

#include <optional>
#include <string>
#include <vector>

#include "cli/cli_args.h"
#include "transcribe/note_insertion.h"
#include "transcribe/recording_notes.h"

namespace tahrir::cli {

// --grid, --signature, --base, --koron, --sori; nullopt when one is out of range.
std::optional<transcribe::NotesOptions> ParseNotesOptions(Args& args);

// The notes of the tracker for real recordings as the insertion takes them: times in
// samples at the file's own `rate`. The note list goes to `noteList` when one is named.
// Returns the exit code (2 with a message naming the file that cannot be read).
int ModernNotes(const std::string& file, const transcribe::NotesOptions& options,
                const std::optional<std::string>& noteList,
                std::vector<transcribe::TimedNote>& notes, double& rate);

} // namespace tahrir::cli
