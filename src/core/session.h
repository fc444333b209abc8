#pragma once
// The core's part of the start sequence: data folder, tables, calibration and defaults.

#include <filesystem>
#include <optional>
#include <string>

#include "core/document.h"

namespace tahrir::core {

inline constexpr long long DefaultCalibration = 80000000;

// Records the data folder, fills the instrument, chord and hint tables, reads the
// calibration and sets the tempo and page defaults.
void StartSession(Session& session, const std::filesystem::path& appFolder);

// The one number of "initialize.vel"; nullopt when the file is missing or holds no number.
std::optional<long long> ReadCalibration(const std::filesystem::path& file);

} // namespace tahrir::core
