#pragma once
// Physical models of the two sampled instruments: a plucked double course of a tar and a
// frame drum with ring jingles. Deterministic: the same index gives the same samples.

#include <cstdint>
#include <vector>

namespace tahrir::wavegen {

inline constexpr int kInstrumentRate = 32000;

// Frequency in Hz of a MIDI pitch, fractional for quarter tones.
double PitchHz(double midiPitch);

// A small, platform-independent random source (the standard distributions are not).
class Noise {
public:
    explicit Noise(std::uint32_t seed) : m_state(seed * 2654435761u + 1u) {}
    double next(); // uniform in [-1, 1)

private:
    std::uint32_t m_state;
};

// A tar note of `seconds`: two strings of one course, each a digital waveguide (delay
// line, one-zero damping filter, all-pass tuning filter) plucked with a bright noise
// burst, through a small body of resonant filters.
std::vector<float> TarNote(double midiPitch, double seconds, std::uint32_t seed);

// A daf stroke: decaying modes of a circular membrane whose lowest mode lies an octave
// below `midiPitch`, a slap of filtered noise, and the rattle of the rings.
std::vector<float> DafStroke(double midiPitch, double seconds, std::uint32_t seed);

// Scales to the given peak and fades the last `fadeSeconds` to silence.
void Finish(std::vector<float>& x, float peak, double fadeSeconds, int rate);

} // namespace tahrir::wavegen
