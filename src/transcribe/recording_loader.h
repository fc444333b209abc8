#pragma once
// Loads a recording of any format libsndfile reads (WAV of any depth, FLAC, Ogg, MP3),
// mixed down to mono and brought to the rate the pitch tracker works at.

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tahrir::transcribe {

struct Recording {
    std::vector<float> samples; // mono, at `rate`
    int rate = 0;               // samples a second of `samples`
    int fileRate = 0;           // the file's own rate
    int fileChannels = 0;
    double seconds = 0;         // length of the file
};

// Reads `path`, mixes its channels to mono and resamples to `workRate` (0 keeps the
// file's rate). On failure returns nullopt and a message naming the file in `error`.
std::optional<Recording> LoadRecording(const std::filesystem::path& path, int workRate,
                                       std::string& error);

// Resamples mono `input` from `fromRate` to `toRate`; an empty result means failure.
std::vector<float> Resample(const std::vector<float>& input, int fromRate, int toRate);

} // namespace tahrir::transcribe
