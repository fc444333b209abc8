#pragma once
// The core's part of the start sequence: data folder, text font and calibration.

#include <filesystem>
#include <optional>
#include <string>

#include "core/document.h"

namespace tahrir::core {

inline constexpr long long DefaultCalibration = 80000000;

// Records the data folder, sets the text font and reads the calibration. The tables a
// session uses are constant data read where they are needed.
void StartSession(Session& session, const std::filesystem::path& appFolder);

// The one number of "initialize.vel"; nullopt when the file is missing or holds no number.
std::optional<long long> ReadCalibration(const std::filesystem::path& file);

} // namespace tahrir::core
