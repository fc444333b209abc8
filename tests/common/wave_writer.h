#pragma once
// Generated recordings for the transcription tests and benchmarks: 8-bit mono samples of
// tones and silences, written as a 44-byte-header wave file.

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tahrir::test {

// One stretch of a melody: a tone of `hz` (0 for silence) with `harmonics` partials of
// falling strength (1/n), at `amplitude` of full scale.
struct ToneSpan {
    double hz = 0;
    double seconds = 0;
    int harmonics = 1;
    double amplitude = 0.8;
};

inline std::vector<std::uint8_t> Melody(const std::vector<ToneSpan>& spans, int rate = 11000) {
    constexpr double kTwoPi = 6.283185307179586;
    std::vector<std::uint8_t> samples;
    for (const ToneSpan& s : spans) {
        const auto count = static_cast<std::size_t>(std::lround(s.seconds * rate));
        double norm = 0;
        for (int h = 1; h <= s.harmonics; ++h) norm += 1.0 / h;
        for (std::size_t i = 0; i < count; ++i) {
            double v = 0;
            for (int h = 1; h <= s.harmonics && s.hz > 0; ++h)
                v += std::sin(kTwoPi * s.hz * h * static_cast<double>(i) / rate) / h;
            v = s.hz > 0 ? s.amplitude * v / norm : 0;
            samples.push_back(static_cast<std::uint8_t>(std::lround(128 + 127 * v)));
        }
    }
    return samples;
}

// A header of 44 bytes (RIFF, fmt, data) and the bytes as they are.
inline std::string WaveFileBytes(const std::vector<std::uint8_t>& data, int rate = 11000,
                                 int channels = 1, int bits = 8) {
    std::string out;
    const auto put = [&out](std::uint32_t v, int bytes) {
        for (int i = 0; i < bytes; ++i) out += static_cast<char>((v >> (8 * i)) & 0xFF);
    };
    const auto size = static_cast<std::uint32_t>(data.size());
    const auto blockAlign = static_cast<std::uint32_t>(channels * bits / 8);
    out += "RIFF";
    put(36 + size, 4);
    out += "WAVEfmt ";
    put(16, 4);
    put(1, 2);
    put(static_cast<std::uint32_t>(channels), 2);
    put(static_cast<std::uint32_t>(rate), 4);
    put(static_cast<std::uint32_t>(rate) * blockAlign, 4);
    put(blockAlign, 2);
    put(static_cast<std::uint32_t>(bits), 2);
    out += "data";
    put(size, 4);
    out.append(reinterpret_cast<const char*>(data.data()), data.size());
    return out;
}

inline void WriteWaveFile(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

} // namespace tahrir::test
