#include "core/session.h"

#include <fstream>
#include <iterator>

#include "core/text_input.h"

namespace tahrir::core {

std::optional<long long> ReadCalibration(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) return std::nullopt;
    std::string text;
    // One number is all the file holds; a few hundred bytes are plenty to find it.
    text.resize(256);
    in.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(in.gcount()));
    const auto value = LeadingNumber(text);
    if (!value || *value < 0 || *value > 9.0e18) return std::nullopt;
    return static_cast<long long>(*value);
}

void StartSession(Session& session, const std::filesystem::path& appFolder) {
    session.AppFolder = appFolder;
    session.TextFontName = DefaultTextFontName;
    session.CalibrationValue =
        ReadCalibration(session.file("initialize.vel")).value_or(DefaultCalibration);
}

} // namespace tahrir::core
