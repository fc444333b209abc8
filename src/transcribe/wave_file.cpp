#include "transcribe/wave_file.h"

#include <fstream>

namespace tahrir::transcribe {

std::optional<std::vector<std::uint8_t>> ReadWaveBytes(const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::is_directory(file, error)) return std::nullopt;
    std::ifstream in(file, std::ios::binary);
    if (!in) return std::nullopt;
    // The length is the file's own, never a field of its header.
    in.seekg(0, std::ios::end);
    const std::streamoff size = in.tellg();
    if (size < 0) return std::nullopt;
    in.seekg(0);
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    if (size > 0 && !in.read(reinterpret_cast<char*>(bytes.data()), size)) return std::nullopt;
    return bytes;
}

std::vector<float> WaveSamplesOf(std::string_view bytes) {
    const std::size_t length =
        bytes.size() > WaveHeaderBytes ? bytes.size() - WaveHeaderBytes : 0;
    if (length < 2) return {-1, 0, 0, 0};
    std::vector<float> samples(length);
    for (std::size_t i = 0; i < length; ++i)
        samples[i] = (static_cast<float>(static_cast<std::uint8_t>(bytes[WaveHeaderBytes + i])) - 128) / 128;
    return samples;
}

std::optional<std::vector<float>> LoadWavMonoSamples(const std::filesystem::path& file) {
    const auto bytes = ReadWaveBytes(file);
    if (!bytes) return std::nullopt;
    return WaveSamplesOf(std::string_view(reinterpret_cast<const char*>(bytes->data()), bytes->size()));
}

int WaveByteRate(std::string_view bytes) {
    if (bytes.size() < 30) return 0;
    return static_cast<std::uint8_t>(bytes[28]) + 256 * static_cast<std::uint8_t>(bytes[29]);
}

} // namespace tahrir::transcribe
