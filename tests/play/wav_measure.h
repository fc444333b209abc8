#pragma once
// Measuring rendered WAV files: the samples of one channel and the pitch of a stretch.

#include <gtest/gtest.h>

#include <sndfile.h>

#include <cmath>
#include <filesystem>
#include <vector>

namespace tahrir::play::testing {

// The left channel of a 44.1 kHz WAV file.
inline std::vector<float> ReadLeft(const std::filesystem::path& file) {
    SF_INFO info{};
    SNDFILE* f = sf_open(file.string().c_str(), SFM_READ, &info);
    if (!f) return {};
    EXPECT_EQ(info.samplerate, 44100);
    std::vector<float> frames(static_cast<std::size_t>(info.frames * info.channels)), left;
    sf_readf_float(f, frames.data(), info.frames);
    sf_close(f);
    for (std::size_t i = 0; i < frames.size(); i += static_cast<std::size_t>(info.channels))
        left.push_back(frames[i]);
    return left;
}

// Fundamental frequency by YIN: cumulative-mean-normalised difference, first dip below
// `threshold` (0.1 for instruments, more for a breathy voice),
// refined by a parabola through its neighbours.
inline double YinPitch(const std::vector<float>& x, std::size_t from, std::size_t length, int rate,
                       double threshold = 0.1) {
    std::vector<double> cmnd(static_cast<std::size_t>(rate / 80 + 2), 1.0);
    double running = 0;
    for (std::size_t lag = 1; lag < cmnd.size(); ++lag) {
        double d = 0;
        for (std::size_t i = from; i < from + length; ++i)
            d += std::pow(static_cast<double>(x[i]) - x[i + lag], 2);
        running += d;
        cmnd[lag] = running > 0 ? d * static_cast<double>(lag) / running : 1.0;
    }
    for (auto lag = static_cast<std::size_t>(rate / 1500); lag + 1 < cmnd.size(); ++lag) {
        if (cmnd[lag] >= threshold) continue;
        while (lag + 2 < cmnd.size() && cmnd[lag + 1] < cmnd[lag])
            ++lag;
        const double a = cmnd[lag - 1], b = cmnd[lag], c = cmnd[lag + 1];
        return rate / (static_cast<double>(lag) + (a - c) / (2 * (a - 2 * b + c)));
    }
    return 0;
}

} // namespace tahrir::play::testing
