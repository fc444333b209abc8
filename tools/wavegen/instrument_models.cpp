#include "instrument_models.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tahrir::wavegen {

namespace {

constexpr double kPi = std::numbers::pi;

// A two-pole band-pass resonator (constant peak gain).
class Resonator {
public:
    Resonator(double hz, double q, int rate) {
        const double w = 2 * kPi * hz / rate;
        const double alpha = std::sin(w) / (2 * q);
        const double a0 = 1 + alpha;
        m_b0 = alpha / a0;
        m_a1 = -2 * std::cos(w) / a0;
        m_a2 = (1 - alpha) / a0;
    }
    double operator()(double x) {
        const double y = m_b0 * (x - m_x2) - m_a1 * m_y1 - m_a2 * m_y2;
        m_x2 = m_x1;
        m_x1 = x;
        m_y2 = m_y1;
        m_y1 = y;
        return y;
    }

private:
    double m_b0, m_a1, m_a2;
    double m_x1 = 0, m_x2 = 0, m_y1 = 0, m_y2 = 0;
};

// Phase delay in samples at `w` of the damping filter (1 - b) + b z^-1.
double DampingDelay(double b, double w) {
    return std::atan2(b * std::sin(w), (1 - b) + b * std::cos(w)) / w;
}

// Phase delay in samples at `w` of the all-pass (c + z^-1) / (1 + c z^-1).
double AllPassDelay(double c, double w) {
    return (std::atan2(std::sin(w), c + std::cos(w)) - std::atan2(c * std::sin(w), 1 + c * std::cos(w))) / w;
}

// One string: the loop delay at its fundamental is exactly rate / hz, so the string is
// in tune whatever its damping.
std::vector<double> PluckedString(double hz, double seconds, double brightness,
                                  const std::vector<double>& pluck) {
    const double period = kInstrumentRate / hz;
    const double w = 2 * kPi * hz / kInstrumentRate;
    const double lowpass = DampingDelay(brightness, w);
    const int length = static_cast<int>(std::floor(period - lowpass - 0.5));
    const double fraction = period - lowpass - length; // what the all-pass must delay
    double lo = -0.99, hi = 0.99;                       // delay falls as c rises
    for (int i = 0; i < 60; ++i)
        (AllPassDelay((lo + hi) / 2, w) > fraction ? lo : hi) = (lo + hi) / 2;
    const double c = (lo + hi) / 2;
    // Higher strings die away sooner, as on the instrument.
    const double t60 = std::clamp(3.5 * std::sqrt(130.0 / hz), 0.8, 3.5);
    const double gain = std::pow(10.0, -3.0 / (t60 * hz));

    std::vector<double> line(static_cast<std::size_t>(length), 0.0);
    std::vector<double> out(static_cast<std::size_t>(seconds * kInstrumentRate));
    double previous = 0, apIn = 0, apOut = 0;
    std::size_t at = 0;
    for (std::size_t n = 0; n < out.size(); ++n) {
        const double y = line[at];
        const double damped = gain * ((1 - brightness) * y + brightness * previous);
        previous = y;
        const double tuned = c * damped + apIn - c * apOut;
        apIn = damped;
        apOut = tuned;
        line[at] = tuned + (n < pluck.size() ? pluck[n] : 0.0);
        at = at + 1 == line.size() ? 0 : at + 1;
        out[n] = y;
    }
    return out;
}

} // namespace

double PitchHz(double midiPitch) {
    return 440.0 * std::pow(2.0, (midiPitch - 69) / 12);
}

double Noise::next() {
    m_state = m_state * 1664525u + 1013904223u;
    return static_cast<double>(m_state >> 8) / (1u << 23) - 1.0;
}

std::vector<float> TarNote(double midiPitch, double seconds, std::uint32_t seed) {
    const double hz = PitchHz(midiPitch);
    Noise noise(seed);
    // The pick: a burst one period long, notched where the plectrum strikes (an eighth of
    // the string), so the pluck is bright but not buzzy.
    const auto period = static_cast<std::size_t>(kInstrumentRate / hz);
    const std::size_t notch = std::max<std::size_t>(1, period / 8);
    std::vector<double> burst(period), pluck(period), pluck2(period);
    for (double& v : burst)
        v = noise.next();
    // The second string is struck a little nearer the bridge.
    const std::size_t notch2 = std::max<std::size_t>(1, period / 10);
    for (std::size_t n = 0; n < period; ++n) {
        pluck[n] = burst[n] - (n >= notch ? burst[n - notch] : 0.0);
        pluck2[n] = burst[n] - (n >= notch2 ? burst[n - notch2] : 0.0);
    }
    const double brightness = std::clamp(0.25 + hz / 8000, 0.25, 0.45);
    // The two strings of the course, half a cent either side of the pitch: they beat
    // slowly, as a course does, without pulling the note off its pitch.
    const double detune = std::pow(2.0, 0.5 / 1200);
    const auto a = PluckedString(hz * detune, seconds, brightness, pluck);
    const auto b = PluckedString(hz / detune, seconds, brightness, pluck2);
    // The body: a small skin-covered bowl with a few broad resonances.
    Resonator air(190, 6, kInstrumentRate), wood(430, 5, kInstrumentRate), skin(1250, 3, kInstrumentRate);
    std::vector<float> out(a.size());
    for (std::size_t n = 0; n < out.size(); ++n) {
        const double dry = a[n] + 0.8 * b[n];
        out[n] = static_cast<float>(dry + 0.35 * (air(dry) + wood(dry) + skin(dry)));
    }
    return out;
}

std::vector<float> DafStroke(double midiPitch, double seconds, std::uint32_t seed) {
    // Modes of a circular membrane (ratios of the Bessel zeros, lowered a little by the
    // air around the skin), each with its own weight and decay.
    static constexpr double kRatios[] = {1.0, 1.59, 2.14, 2.30, 2.65, 2.92, 3.16, 3.50, 3.60, 4.06};
    const double hz = PitchHz(midiPitch) / 2;
    Noise noise(seed);
    std::vector<double> x(static_cast<std::size_t>(seconds * kInstrumentRate), 0.0);
    const double tau = 0.28 * std::pow(100.0 / hz, 0.3);
    for (std::size_t k = 0; k < std::size(kRatios); ++k) {
        const double f = hz * kRatios[k];
        if (f > kInstrumentRate * 0.45) break;
        const double amp = (1 + 0.2 * noise.next()) / std::pow(static_cast<double>(k + 1), 0.7);
        const double decay = tau / std::pow(kRatios[k], 0.8);
        for (std::size_t n = 0; n < x.size(); ++n) {
            const double t = static_cast<double>(n) / kInstrumentRate;
            x[n] += amp * std::exp(-t / decay) * std::sin(2 * kPi * f * t);
        }
    }
    // The hand on the skin: a soft onset and a short slap of noise.
    Resonator slap(1800, 1.5, kInstrumentRate);
    for (std::size_t n = 0; n < x.size(); ++n) {
        const double t = static_cast<double>(n) / kInstrumentRate;
        const double onset = t < 0.0015 ? 0.5 - 0.5 * std::cos(kPi * t / 0.0015) : 1.0;
        x[n] = x[n] * onset + 0.8 * slap(noise.next()) * std::exp(-t / 0.012);
    }
    // The rings: metal partials struck at the stroke and again as they fall back.
    for (int ring = 0; ring < 12; ++ring) {
        const double base = 3500 + 2500 * (noise.next() + 1);
        const double decay = 0.02 + 0.015 * (noise.next() + 1);
        for (const double hit : {0.002 * (noise.next() + 1), 0.03 + 0.015 * (noise.next() + 1)}) {
            const double level = hit < 0.01 ? 0.05 : 0.02;
            for (std::size_t n = static_cast<std::size_t>(hit * kInstrumentRate); n < x.size(); ++n) {
                const double t = static_cast<double>(n) / kInstrumentRate - hit;
                const double e = level * std::exp(-t / decay);
                if (e < 1e-5) break;
                for (const double r : {1.0, 1.52, 2.31})
                    if (base * r < kInstrumentRate * 0.45) x[n] += e * std::sin(2 * kPi * base * r * t + ring);
            }
        }
    }
    return std::vector<float>(x.begin(), x.end());
}

void Finish(std::vector<float>& x, float peak, double fadeSeconds, int rate) {
    float most = 0;
    for (float v : x)
        most = std::max(most, std::fabs(v));
    if (most > 0)
        for (float& v : x)
            v *= peak / most;
    const auto fade = std::min(x.size(), static_cast<std::size_t>(fadeSeconds * rate));
    for (std::size_t i = 0; i < fade; ++i)
        x[x.size() - fade + i] *= static_cast<float>(fade - i) / static_cast<float>(fade);
}

} // namespace tahrir::wavegen
