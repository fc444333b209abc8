#include "transcribe/pyin_tracker.h"

#include <fftw3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstdint>
#include <limits>

namespace tahrir::transcribe {
namespace {

constexpr int kThresholds = 100;     // 0.01 .. 1.00
constexpr double kBetaA = 2.0;       // threshold prior Beta(2, 18): mean 0.1
constexpr double kBetaB = 11.33;
constexpr double kBelowAllWeight = 0.01; // mass left when no trough is under a threshold
constexpr double kBinCents = 10.0;
constexpr double kSwitch = 0.05;     // voiced <-> unvoiced per frame
constexpr double kJumpPerBin = 0.03; // log cost of each 10-cent bin of a pitch move
constexpr double kGateDb = 50.0;     // frames this far under the loudest are unvoiced
constexpr float kAbsorbDepth = 0.25f;  // d' under which a period is clearly periodic
constexpr float kAbsorbMargin = 0.15f; // ... and not much less so than its multiple
constexpr float kHighHz = 1000;       // where a lone second harmonic is suspect
constexpr float kShallowDepth = 0.04f; // ... when its trough is this shallow
constexpr int kStates = PyinTracker::kMaxCandidates + 1;

int PowerOfTwoAtLeast(int n) {
    int p = 1;
    while (p < n) p *= 2;
    return p;
}

struct FftwFree {
    void operator()(void* p) const { fftwf_free(p); }
};
template <typename T> using FftwBuffer = std::unique_ptr<T[], FftwFree>;
template <typename T> FftwBuffer<T> AllocFftw(int n) {
    return FftwBuffer<T>(static_cast<T*>(fftwf_malloc(sizeof(T) * static_cast<std::size_t>(n))));
}

// The candidates of one frame: pitch, probability and 10-cent bin.
struct Candidates {
    std::array<float, PyinTracker::kMaxCandidates> hz{};
    std::array<float, PyinTracker::kMaxCandidates> prob{};
    std::array<std::int16_t, PyinTracker::kMaxCandidates> bin{};
    std::array<float, PyinTracker::kMaxCandidates> depth{}; // d' at the trough
    std::uint8_t count = 0;
    float total = 0;
};

// Multiple-period errors. A trough at a whole multiple of a clearly periodic
// shorter period is that period seen again (a plucked string's slow beating makes the
// later ones deeper): its probability goes to the shortest such period. Above 1 kHz,
// though, a shallow trough with one twice as deep at twice its period is the second
// harmonic of a reed or a voice whose fundamental is weak: the octave below takes it.
void ResolveMultiples(Candidates& c) {
    for (std::size_t j = 1; j < c.count; ++j) {
        for (std::size_t i = 0; i < j; ++i) {
            const float ratio = c.hz[i] / c.hz[j];
            const float k = std::round(ratio);
            if (k < 2 || std::abs(ratio - k) > 0.03f * k) continue;
            if (k == 2 && c.hz[i] >= kHighHz && c.depth[i] >= kShallowDepth &&
                c.depth[j] <= c.depth[i] / 2) {
                c.prob[j] += c.prob[i];
                c.prob[i] = 0;
                continue;
            }
            if (c.depth[i] > kAbsorbDepth || c.depth[i] > c.depth[j] + kAbsorbMargin) continue;
            c.prob[i] += c.prob[j];
            c.prob[j] = 0;
            break;
        }
    }
}

} // namespace

struct PyinTracker::Impl {
    int rate;
    int window; // YIN integration window W
    int size;   // frame length and FFT size, 2 W
    int hop;
    int tauMin, tauMax;
    double minHz;
    std::array<double, kThresholds + 1> massBelow{}; // prior mass of thresholds <= k / 100

    FftwBuffer<float> frame, head, corr;
    FftwBuffer<fftwf_complex> spectrum, headSpectrum;
    fftwf_plan forward = nullptr, backward = nullptr;
    std::vector<float> diff, cmnd, energy;

    std::vector<Candidates> cands;
    std::vector<std::array<std::uint8_t, kStates>> back;

    Impl(int r, TrackerRange range);
    ~Impl() {
        fftwf_destroy_plan(forward);
        fftwf_destroy_plan(backward);
    }
    double priorAbove(double v, double m) const;
    void differenceFunction();
    void thresholdCandidates(Candidates& out) const;
    void analyse(const std::vector<float>& samples, std::size_t start, PitchFrame& f,
                 Candidates& c);
    void decode(std::vector<PitchFrame>& frames);
};

PyinTracker::Impl::Impl(int r, TrackerRange range)
    : rate(r), window(PowerOfTwoAtLeast(std::max(64, r / 48))), size(2 * window),
      hop(window / 2), minHz(range.minHz) {
    tauMin = std::max(2, static_cast<int>(rate / range.maxHz));
    tauMax = std::min(window - 1, static_cast<int>(std::ceil(rate / range.minHz)));
    std::array<double, kThresholds> pmf{};
    double sum = 0;
    for (int k = 0; k < kThresholds; ++k) {
        const double s = (k + 0.5) / kThresholds;
        pmf[static_cast<std::size_t>(k)] = std::pow(s, kBetaA - 1) * std::pow(1 - s, kBetaB - 1);
        sum += pmf[static_cast<std::size_t>(k)];
    }
    for (int k = 0; k < kThresholds; ++k)
        massBelow[static_cast<std::size_t>(k + 1)] =
            massBelow[static_cast<std::size_t>(k)] + pmf[static_cast<std::size_t>(k)] / sum;
    frame = AllocFftw<float>(size);
    head = AllocFftw<float>(size);
    corr = AllocFftw<float>(size);
    spectrum = AllocFftw<fftwf_complex>(size / 2 + 1);
    headSpectrum = AllocFftw<fftwf_complex>(size / 2 + 1);
    forward = fftwf_plan_dft_r2c_1d(size, frame.get(), spectrum.get(), FFTW_ESTIMATE);
    backward = fftwf_plan_dft_c2r_1d(size, spectrum.get(), corr.get(), FFTW_ESTIMATE);
    const auto w = static_cast<std::size_t>(window);
    diff.assign(w + 1, 0);
    cmnd.assign(w + 1, 1);
    energy.assign(static_cast<std::size_t>(size) + 1, 0);
}

// Prior mass of the thresholds s with v < s <= m.
double PyinTracker::Impl::priorAbove(double v, double m) const {
    auto at = [&](double x) {
        const int k = std::clamp(static_cast<int>(std::floor(x * kThresholds + 1e-9)), 0,
                                 kThresholds);
        return massBelow[static_cast<std::size_t>(k)];
    };
    return std::max(0.0, at(m) - at(v));
}

// d(tau) = e(0) + e(tau) - 2 r(tau), the correlation r taken through the transform, then
// the cumulative-mean-normalised d'.
void PyinTracker::Impl::differenceFunction() {
    const auto n = static_cast<std::size_t>(size);
    const auto w = static_cast<std::size_t>(window);
    std::copy(frame.get(), frame.get() + w, head.get());
    std::fill(head.get() + w, head.get() + n, 0.0f);
    fftwf_execute_dft_r2c(forward, head.get(), headSpectrum.get());
    fftwf_execute_dft_r2c(forward, frame.get(), spectrum.get());
    for (std::size_t k = 0; k <= n / 2; ++k) {
        const std::complex<float> a(spectrum[k][0], spectrum[k][1]);
        const std::complex<float> b(headSpectrum[k][0], -headSpectrum[k][1]);
        const std::complex<float> p = a * b;
        spectrum[k][0] = p.real();
        spectrum[k][1] = p.imag();
    }
    fftwf_execute_dft_c2r(backward, spectrum.get(), corr.get());
    energy[0] = 0;
    for (std::size_t i = 0; i < n; ++i) energy[i + 1] = energy[i] + frame[i] * frame[i];
    const float e0 = energy[w];
    const float scale = 1.0f / static_cast<float>(n);
    double running = 0;
    cmnd[0] = 1;
    for (std::size_t tau = 1; tau <= w; ++tau) {
        const float et = energy[tau + w] - energy[tau];
        diff[tau] = std::max(0.0f, e0 + et - 2.0f * corr[tau] * scale);
        running += diff[tau];
        cmnd[tau] = running > 0 ? static_cast<float>(diff[tau] * tau / running) : 1.0f;
    }
}

// Every trough of d' is the first one under some thresholds; it gets their prior mass.
void PyinTracker::Impl::thresholdCandidates(Candidates& out) const {
    out.count = 0;
    out.total = 0;
    double runningMin = 2.0; // above every threshold
    int globalTau = -1;
    for (int tau = tauMin; tau <= tauMax; ++tau) {
        const auto t = static_cast<std::size_t>(tau);
        if (!(cmnd[t] < cmnd[t - 1] && cmnd[t] <= cmnd[t + 1])) continue;
        if (globalTau < 0 || cmnd[t] < cmnd[static_cast<std::size_t>(globalTau)]) globalTau = tau;
        if (cmnd[t] >= runningMin) continue;
        double p = priorAbove(cmnd[t], runningMin);
        runningMin = cmnd[t];
        if (p <= 1e-6) continue;
        // Parabolic refinement on d.
        const double a = diff[t - 1], b = diff[t], c = diff[t + 1];
        const double den = a + c - 2 * b;
        const double shift = den > 0 ? std::clamp((a - c) / (2 * den), -1.0, 1.0) : 0.0;
        const double hz = rate / (tau + shift);
        const int bin = static_cast<int>(std::lround(1200.0 * std::log2(hz / minHz) / kBinCents));
        std::size_t slot = out.count;
        for (std::size_t i = 0; i < out.count; ++i)
            if (out.bin[i] == bin) slot = i;
        if (slot == out.count) {
            if (out.count == PyinTracker::kMaxCandidates) continue;
            out.hz[slot] = static_cast<float>(hz);
            out.bin[slot] = static_cast<std::int16_t>(bin);
            out.prob[slot] = 0;
            out.depth[slot] = cmnd[t];
            ++out.count;
        }
        out.prob[slot] += static_cast<float>(p);
    }
    // Thresholds under every trough: pYIN hands a little of their mass to the deepest.
    if (globalTau >= 0 && out.count > 0) {
        const double rest = priorAbove(-1.0, cmnd[static_cast<std::size_t>(globalTau)]);
        const double hz = rate / static_cast<double>(globalTau);
        for (std::size_t i = 0; i < out.count; ++i)
            if (std::abs(out.hz[i] - hz) / hz < 0.03)
                out.prob[i] += static_cast<float>(rest * kBelowAllWeight);
    }
    ResolveMultiples(out);
    for (std::size_t i = 0; i < out.count; ++i) out.total += out.prob[i];
}

void PyinTracker::Impl::analyse(const std::vector<float>& samples, std::size_t start,
                                PitchFrame& f, Candidates& c) {
    const auto n = static_cast<std::size_t>(size);
    const std::size_t avail = start < samples.size() ? std::min(n, samples.size() - start) : 0;
    std::copy(samples.begin() + static_cast<std::ptrdiff_t>(start),
              samples.begin() + static_cast<std::ptrdiff_t>(start + avail), frame.get());
    std::fill(frame.get() + avail, frame.get() + n, 0.0f);
    differenceFunction();
    const double meanSquare = energy[static_cast<std::size_t>(window)] / window;
    f.rmsDb = static_cast<float>(10.0 * std::log10(meanSquare + 1e-12));
    f.seconds = (static_cast<double>(start) + window / 2.0) / rate;
    thresholdCandidates(c);
}

// Viterbi over an unvoiced state and the voiced states of each frame's candidates; voiced
// bins without a candidate have no probability, so only candidates need a state.
void PyinTracker::Impl::decode(std::vector<PitchFrame>& frames) {
    const double lStay = std::log(1 - kSwitch), lSwitch = std::log(kSwitch);
    std::array<double, kStates> prev{}, cur{};
    const std::size_t count = frames.size();
    for (std::size_t t = 0; t < count; ++t) {
        const Candidates& c = cands[t];
        const Candidates* p = t > 0 ? &cands[t - 1] : nullptr;
        // Voicing is judged on the total; among the candidates the best takes it whole and
        // the others in proportion to their probability.
        const float top = c.count ? *std::max_element(c.prob.begin(), c.prob.begin() + c.count) : 1;
        cur[0] = std::log(std::max(1.0 - c.total, 0.01));
        for (std::size_t k = 0; k < c.count; ++k)
            cur[k + 1] = std::log(std::max(c.total * c.prob[k] / top, 1e-9f));
        auto& bp = back[t];
        bp.fill(0);
        if (!p) {
            prev = cur;
            continue;
        }
        for (std::size_t j = 0; j <= c.count; ++j) {
            double best = prev[0] + (j == 0 ? lStay : lSwitch);
            for (std::size_t i = 1; i <= p->count; ++i) {
                const double trans = j == 0 ? lSwitch
                    : lStay - kJumpPerBin * std::abs(p->bin[i - 1] - c.bin[j - 1]);
                if (prev[i] + trans > best) {
                    best = prev[i] + trans;
                    bp[j] = static_cast<std::uint8_t>(i);
                }
            }
            cur[j] += best;
        }
        prev = cur;
    }
    if (count == 0) return;
    std::size_t state = 0;
    for (std::size_t k = 1; k <= cands[count - 1].count; ++k)
        if (prev[k] > prev[state]) state = k;
    for (std::size_t t = count; t-- > 0;) {
        frames[t].hz = state > 0 ? cands[t].hz[state - 1] : 0.0;
        frames[t].aperiodicity = state > 0 ? cands[t].depth[state - 1] : 1.0f;
        state = back[t][state];
    }
}

PyinTracker::PyinTracker(int rate, TrackerRange range)
    : m_impl(std::make_unique<Impl>(rate, range)) {}
PyinTracker::~PyinTracker() = default;
int PyinTracker::rate() const { return m_impl->rate; }
int PyinTracker::hop() const { return m_impl->hop; }

std::vector<PitchFrame> PyinTracker::track(const std::vector<float>& samples) {
    Impl& m = *m_impl;
    const std::size_t hop = static_cast<std::size_t>(m.hop);
    const std::size_t count = samples.empty() ? 0 : (samples.size() - 1) / hop + 1;
    std::vector<PitchFrame> frames(count);
    m.cands.resize(count);
    m.back.resize(count);
    float loudest = -120;
    for (std::size_t t = 0; t < count; ++t) {
        m.analyse(samples, t * hop, frames[t], m.cands[t]);
        loudest = std::max(loudest, frames[t].rmsDb);
        // The rise of the level over the lower of the two frames before.
        const float before = t >= 2 ? std::min(frames[t - 1].rmsDb, frames[t - 2].rmsDb)
                                    : t == 1 ? frames[0].rmsDb : -120.0f;
        frames[t].onsetStrength = std::max(0.0f, frames[t].rmsDb - before);
    }
    for (std::size_t t = 0; t < count; ++t) {
        if (frames[t].rmsDb < loudest - kGateDb) m.cands[t] = Candidates{};
        frames[t].voicedProbability = std::min(1.0f, m.cands[t].total);
    }
    m.decode(frames);
    return frames;
}

} // namespace tahrir::transcribe
