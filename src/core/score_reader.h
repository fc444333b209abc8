#pragma once
// The score file reader: every generation of ".srv" file into a sheet.

#include <filesystem>
#include <string>
#include <string_view>

#include "core/document.h"

namespace tahrir::core {

class PageStore;

inline constexpr std::string_view CurrentMagic = "Sv5";
inline constexpr std::string_view GenerationMarker = "Sorvan4 SRV File";
inline constexpr std::string_view BuiltInFileName = "DO1DO6";

// How far a file was understood.
enum class LoadStatus {
    Complete, // every line was recognised
    Partial,  // lines the grammar does not know were dropped
    NoFile,   // no file name: nothing was read
    Failed,   // nothing was loaded; the open score is untouched
};

struct LoadResult {
    LoadStatus status = LoadStatus::Complete;
    int fileLines = 0;    // lines read after the header fields
    int droppedLines = 0; // lines the grammar does not know
    std::string message;  // why a load failed, naming the file
    std::string storeError; // the undo store could not be written (the load stands)

    bool loaded() const { return status == LoadStatus::Complete || status == LoadStatus::Partial; }
};

// Steps that read the bytes of a file into `doc` (description, generation, lines, the
// tidy pass); `builtIn` marks the program's own file, whose header needs no conversion.
// Throws SheetIndexError when the file holds more than 2048 accepted lines.
LoadResult ParseScore(std::string_view bytes, bool builtIn, Document& doc);

// Reverses the old line scrambling: every character but a blank or a double quote
// loses 10 plus its 1-based position; those two become blanks. An empty line is " ".
std::string UnscrambleLine(std::string_view line);

// Loads the file named by doc.CurrentFileName into a fresh sheet and, on success only,
// replaces the open score: the undo store is filled (when given), the rhythm pass runs,
// the tempo is taken from line 2 and the cursor stands on line 4.
LoadResult Openp(Document& doc, const Session& session, PageStore* store);

} // namespace tahrir::core
