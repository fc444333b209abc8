#pragma once
// The score file writer and the new-score command.

#include <filesystem>
#include <optional>
#include <string>

#include "core/document.h"

namespace tahrir::core {

class PageStore;

// The first field of every file we write: the magic and a name, no double quote.
inline constexpr const char* SavedMagicField = "Sv5 Tahrir score";

// The bytes of a score file: the magic and the description as quoted fields (a quote
// inside the description is not escaped), then lines 1..LastLine through Scratch, CR LF.
std::string ScoreFileImage(const Document& doc);

struct SaveResult {
    bool ok = false;
    std::string message; // why the file could not be written, naming it
};

// Writes the score to `path` through a temporary file renamed over it, so that a failed
// write leaves the old file whole. On success DirtyFlag is cleared and the document
// takes the new name.
SaveResult SaveImage(Document& doc, const std::filesystem::path& path);

} // namespace tahrir::core
