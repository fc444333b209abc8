#pragma once
// Generated test signals for the recording tracker: tones with harmonics, glides, vibrato,
// attacks, silence and noise, at any rate.

#include <cmath>
#include <functional>
#include <vector>

namespace tahrir::test {

inline constexpr double kTwoPi = 6.283185307179586;

struct ToneShape {
    double seconds = 1;
    int harmonics = 1;        // amplitudes 1/k
    double amplitude = 0.5;
    double decay = 0;         // per second: an exponential envelope from each attack
    double vibratoCents = 0;  // depth either side, at 5.5 Hz
};

// Appends a tone whose frequency at time t (seconds from its start) is hz(t).
inline void AppendTone(std::vector<float>& out, int rate, const std::function<double(double)>& hz,
                       const ToneShape& shape) {
    const auto n = static_cast<std::size_t>(shape.seconds * rate);
    double phase = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const double t = static_cast<double>(i) / rate;
        const double f = hz(t) * std::pow(2.0, shape.vibratoCents * std::sin(kTwoPi * 5.5 * t) / 1200);
        phase += kTwoPi * f / rate;
        double v = 0;
        for (int k = 1; k <= shape.harmonics; ++k) v += std::sin(k * phase) / k;
        const double attack = std::min(1.0, t / 0.005); // 5 ms, no click
        out.push_back(static_cast<float>(shape.amplitude * attack * std::exp(-shape.decay * t) * v));
    }
}

inline void AppendSilence(std::vector<float>& out, int rate, double seconds) {
    out.insert(out.end(), static_cast<std::size_t>(seconds * rate), 0.0f);
}

inline double MidiHz(double note) { return 440.0 * std::pow(2.0, (note - 69) / 12); }

inline double CentsBetween(double hz, double reference) {
    return 1200.0 * std::log2(hz / reference);
}

} // namespace tahrir::test
