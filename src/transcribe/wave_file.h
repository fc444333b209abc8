#pragma once
// Wave files as the transcription reads them: no chunks are parsed; a fixed 44-byte
// header is skipped and every byte after it is one unsigned sample with 128 as silence.
// A 16-bit or stereo file is read byte by byte all the same.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace tahrir::transcribe {

inline constexpr int WaveHeaderBytes = 44;
// The rate the pitch finder takes for every file.
inline constexpr int WaveRate = 11000;

// The whole file, or nullopt when it cannot be opened or read.
std::optional<std::vector<std::uint8_t>> ReadWaveBytes(const std::filesystem::path& file);

// (byte - 128) / 128 for every byte after the header. Less than two samples make an empty
// load: four samples, the first -1.
std::vector<float> WaveSamplesOf(std::string_view bytes);
// The same from a file; nullopt when it cannot be read.
std::optional<std::vector<float>> LoadWavMonoSamples(const std::filesystem::path& file);

// Byte 29 plus 256 times byte 30 (counted from 1): the low half of the header's
// bytes-a-second field, the sample rate of an 8-bit mono file; 0 when the file is shorter.
int WaveByteRate(std::string_view bytes);

} // namespace tahrir::transcribe
