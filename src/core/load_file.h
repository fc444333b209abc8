#pragma once
// The open command without its dialogs: the file name check, the recent list and the
// companion recording of a score.

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/document.h"
#include "core/score_reader.h"

namespace tahrir::core {

inline constexpr int RecentListSize = 26;
inline constexpr const char* RecentListName = "RecentList.TXT";
inline constexpr const char* RecentListEnd = "--Back--";

// "Can't read File Name" for a name holding "?"; nullopt when the name is usable.
std::optional<std::string> CheckFileName(const std::string& path);

// At most 26 lines of "RecentList.TXT", as the list control shows them.
std::vector<std::string> ReadRecentList(const std::filesystem::path& appFolder);

// Puts `path` first in "RecentList.TXT": the file is made with the one path when missing;
// otherwise the old entries follow, without repeats of the path, blanks or the end mark,
// and "--Back--" ends the list. False when the file cannot be written.
bool UpdateRecentList(const std::filesystem::path& appFolder, const std::string& path);

// The recording that goes with a score: its name without ".srv", "-T", the tempo, ".Wav".
std::string CompanionRecording(const std::string& fileName, double tempo);

// Tempo as the old number-to-text conversion writes it: "72", "72.5", "-3".
std::string NumberText(double value);

struct OpenResult {
    LoadResult load;
    std::optional<std::string> message; // a message box for the user
    std::string recording;              // companion recording, empty when there is none
    bool recentListWritten = true;
};

// Steps 3 to 9 of the open command on a chosen path: the name check, the recent list,
// the load and the companion recording. A missing file ends the command quietly.
OpenResult OpenScoreFile(Document& doc, const Session& session, PageStore* store,
                         const std::string& path);

} // namespace tahrir::core
