#include "transcribe/pitch_finder.h"

#include <fstream>
#include <vector>

#include "transcribe/wave_file.h"

namespace tahrir::transcribe {

namespace {

constexpr double kThreshold = 0.1;

// Sum over i < m of (x[i] - x[i + tau])²: exact in floats for 8-bit samples, whatever the
// order of the sum, so it may run as vector code.
float Difference(const float* x, int m, int tau) {
    float sum = 0;
#pragma omp simd reduction(+ : sum)
    for (int i = 0; i < m; ++i) {
        const float e = x[i] - x[i + tau];
        sum += e * e;
    }
    return sum;
}

double FirstFramePitch(std::span<const float> samples, std::size_t frames) {
    for (std::size_t f = 0; f < frames; ++f) {
        const double hz = YinPitch(samples.subspan(f * PitchFrameSize, PitchFrameSize), WaveRate);
        if (hz > LowestPitch) return hz;
    }
    return 0;
}

} // namespace

double YinPitch(std::span<const float> samples, int rate) {
    if (samples.size() < 2) return 0;
    const int m = static_cast<int>((samples.size() - 1) / 2);
    std::vector<double> normalised(static_cast<std::size_t>(m) + 1, 1.0);
    double running = 0;
    // d'(tau) needs only the lags up to tau, so the search stops one lag after the first
    // dip under the threshold: the answer is the same as after filling every lag.
    for (int tau = 1; tau <= m; ++tau) {
        const double d = Difference(samples.data(), m, tau);
        running += d;
        normalised[static_cast<std::size_t>(tau)] = running == 0 ? 1.0 : d * tau / running;
        const int dip = tau - 1;
        const auto t = static_cast<std::size_t>(dip);
        if (dip < 2 || dip >= m || normalised[t] >= kThreshold) continue;
        // Parabolic refinement around the first lag under the threshold.
        const double a = normalised[t - 1], b = normalised[t], c = normalised[t + 1];
        const double den = a + c - 2 * b;
        const double estimate = den == 0 ? dip : dip + (a - c) / (2 * den);
        return estimate > 0 ? rate / estimate : 0;
    }
    return 0;
}

double WaveFilePitch(std::span<const float> samples) {
    // A first sample of -1 is the mark of an empty load.
    if (samples.empty() || samples[0] == -1) return 0;
    const std::size_t frames =
        samples.size() >= PitchFrameSize ? (samples.size() - PitchFrameSize) / PitchFrameSize + 1 : 0;
    return FirstFramePitch(samples, frames);
}

std::optional<double> WaveFilePitch(const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::is_directory(file, error)) return std::nullopt;
    std::ifstream in(file, std::ios::binary);
    if (!in) return std::nullopt;
    char header[WaveHeaderBytes];
    if (!in.read(header, WaveHeaderBytes)) return 0.0; // too short: an empty load
    // Whole frames are read a block at a time, so a long file costs only what it takes.
    constexpr std::size_t kFramesPerBlock = 64;
    std::vector<char> block(kFramesPerBlock * PitchFrameSize);
    std::vector<float> samples(block.size());
    bool first = true;
    while (in) {
        in.read(block.data(), static_cast<std::streamsize>(block.size()));
        const auto got = static_cast<std::size_t>(in.gcount());
        if (first && got < 2) return 0.0;
        if (first && static_cast<unsigned char>(block[0]) == 0) return 0.0;
        first = false;
        for (std::size_t i = 0; i < got; ++i)
            samples[i] = (static_cast<float>(static_cast<unsigned char>(block[i])) - 128) / 128;
        const double hz = FirstFramePitch(samples, got / PitchFrameSize);
        if (hz > 0) return hz;
    }
    return 0.0;
}

std::vector<double> FramePitches(std::span<const float> samples) {
    std::vector<double> pitches(samples.size() / PitchFrameSize);
    for (std::size_t f = 0; f < pitches.size(); ++f)
        pitches[f] = YinPitch(samples.subspan(f * PitchFrameSize, PitchFrameSize), WaveRate);
    return pitches;
}

} // namespace tahrir::transcribe
