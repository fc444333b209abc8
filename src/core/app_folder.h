#pragma once
// The data folder: where it is, how it is seeded on a first start, and the music-font check.

#include <filesystem>
#include <optional>
#include <string>

namespace tahrir::core {

inline constexpr const char* AppFolderVariable = "TAHRIR_APP_FOLDER";
inline constexpr const char* MissingFontMessage = "Can't find Font file Srv31";

// The data folder chosen for this run: the given folder (the --app-folder option), else
// $TAHRIR_APP_FOLDER, else $XDG_DATA_HOME/tahrir, else ~/.local/share/tahrir.
std::filesystem::path ChooseAppFolder(const std::optional<std::string>& option);

// The data shipped with the program, found from the executable's own path: "data" in the
// build tree (beside it or in a folder above it) or "share/tahrir" in an installed tree.
// Empty when neither is found.
std::filesystem::path ShippedDataFolder();
std::filesystem::path ShippedDataFolderFor(const std::filesystem::path& executable);

// Creates the folder when missing and copies every shipped file it lacks into it
// (existing files are never overwritten). Returns an error text, empty on success.
std::string SeedAppFolder(const std::filesystem::path& appFolder,
                          const std::filesystem::path& shipped);

// ChooseAppFolder; the folder is created when missing, and the per-user default (not a
// folder given by option or environment) is seeded from ShippedDataFolder.
struct AppFolderResult {
    std::filesystem::path folder;
    std::string error; // the folder could not be made or filled
};
AppFolderResult PrepareAppFolder(const std::optional<std::string>& option);

// The start-up font check: "Can't find Font file Srv31" when the music font in the data
// folder is missing or is not a font file; nullopt when it can be loaded.
std::optional<std::string> CheckMusicFont(const std::filesystem::path& fontFile);

// The music font for a data folder: the folder's own copy (`relative` to it) when it passes
// CheckMusicFont, else the shipped one when there is one, else the folder's (missing) copy.
std::filesystem::path MusicFontIn(const std::filesystem::path& appFolder,
                                  const std::filesystem::path& relative = "fonts/bravura.otf");
std::filesystem::path MusicFontIn(const std::filesystem::path& appFolder,
                                  const std::filesystem::path& relative,
                                  const std::filesystem::path& shipped);

} // namespace tahrir::core
