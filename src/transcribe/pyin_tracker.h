#pragma once
// A probabilistic pitch tracker after pYIN: the YIN difference function of every frame
// (through an FFT), a distribution of thresholds that turns its troughs into several
// pitch candidates with probabilities, and a hidden Markov model over 10-cent pitch bins
// with voiced and unvoiced states, decoded with Viterbi into one smooth track.

#include <memory>
#include <vector>

namespace tahrir::transcribe {

struct PitchFrame {
    double seconds = 0;           // centre of the frame's analysis window
    double hz = 0;                // 0 when unvoiced
    double voicedProbability = 0; // sum of the candidates' probabilities
    float rmsDb = -120;           // level of the frame, dB below full scale
    float onsetStrength = 0;      // rise of the level in dB over the frames just before
    float aperiodicity = 1;       // d' at the chosen period: 0 perfectly periodic
};

struct TrackerRange {
    double minHz = 50;
    double maxHz = 2000;
};

class PyinTracker {
public:
    static constexpr int kMaxCandidates = 8;

    // Plans the transforms and allocates every per-frame buffer for `rate`.
    explicit PyinTracker(int rate, TrackerRange range = {});
    ~PyinTracker();
    PyinTracker(const PyinTracker&) = delete;
    PyinTracker& operator=(const PyinTracker&) = delete;

    // The decoded track of mono `samples` at the tracker's rate, one frame a hop.
    std::vector<PitchFrame> track(const std::vector<float>& samples);

    int rate() const;
    int hop() const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace tahrir::transcribe
