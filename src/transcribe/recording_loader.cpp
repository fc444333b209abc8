#include "transcribe/recording_loader.h"

#include <samplerate.h>
#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <system_error>

#include "core/sample_frames.h"

namespace tahrir::transcribe {
namespace {

// A file longer than this is refused rather than read into memory.
constexpr double kMaxSeconds = 3.0 * 3600.0;
constexpr sf_count_t kBlockFrames = 16384;

struct SndCloser {
    void operator()(SNDFILE* f) const { sf_close(f); }
};

std::string Named(const std::filesystem::path& path, const std::string& what) {
    return "cannot read " + path.string() + ": " + what;
}

// Reads every frame, averaging the channels, and hands the mono blocks to `decimator`
// (into `mono`) or appends them to `mono` as they are.
bool ReadMono(SNDFILE* file, const SF_INFO& info, StreamDecimator* decimator,
              std::vector<float>& mono) {
    const auto channels = static_cast<std::size_t>(info.channels);
    std::vector<float> block(static_cast<std::size_t>(kBlockFrames) * channels);
    std::vector<float> mixed(static_cast<std::size_t>(kBlockFrames));
    double frames = 0;
    for (;;) {
        const sf_count_t got = sf_readf_float(file, block.data(), kBlockFrames);
        if (got <= 0) break;
        const auto n = static_cast<std::size_t>(got);
        core::MixFramesToMono(block.data(), n, channels, mixed.data());
        if (decimator) decimator->push(mixed.data(), n, mono);
        else mono.insert(mono.end(), mixed.begin(), mixed.begin() + static_cast<std::ptrdiff_t>(n));
        frames += static_cast<double>(n);
        if (frames > kMaxSeconds * info.samplerate) return false;
    }
    if (decimator) decimator->finish(mono);
    return sf_error(file) == SF_ERR_NO_ERROR;
}

} // namespace

int WorkingRate(int fileRate, int workRate) {
    const long factor = std::max(1L, std::lround(static_cast<double>(fileRate) / workRate));
    const double near = static_cast<double>(fileRate) / static_cast<double>(factor);
    return std::abs(near - workRate) <= 0.1 * workRate && fileRate % factor == 0
               ? static_cast<int>(fileRate / factor)
               : workRate;
}

// A general sinc resampler costs more on three minutes of audio than the whole pitch
// track, and so would any whole copy of the signal at the file's rate: the common rates
// are whole multiples of the working rate, and a windowed-sinc low-pass evaluated only at
// the samples kept, block by block as the file is read, is all they need.
StreamDecimator::StreamDecimator(int factor)
    : m_factor(static_cast<std::size_t>(std::max(1, factor))) {
    constexpr int kHalfTaps = 8; // a side, for each unit of the factor
    const int taps = 2 * kHalfTaps * static_cast<int>(m_factor) + 1;
    // Cycles a sample: the band up to the cut-off passes, and the transition of the
    // filter ends about at the new Nyquist frequency.
    const double cutoff = 0.35 / static_cast<double>(m_factor);
    double sum = 0;
    for (int i = 0; i < taps; ++i) {
        const double n = i - (taps - 1) / 2.0;
        const double sinc = n == 0 ? 2 * cutoff : std::sin(2 * M_PI * cutoff * n) / (M_PI * n);
        const double window = 0.42 - 0.5 * std::cos(2 * M_PI * i / (taps - 1)) +
                              0.08 * std::cos(4 * M_PI * i / (taps - 1)); // Blackman
        m_taps.push_back(static_cast<float>(sinc * window));
        sum += sinc * window;
    }
    for (float& v : m_taps) v = static_cast<float>(v / sum);
    m_pending.assign(m_taps.size() / 2, 0.0f); // the signal is zero before its start
}

void StreamDecimator::push(const float* x, std::size_t n, std::vector<float>& out) {
    m_pending.insert(m_pending.end(), x, x + n);
    m_received += n;
    run(out);
}

void StreamDecimator::finish(std::vector<float>& out) {
    const std::size_t wanted = (m_received + m_factor - 1) / m_factor;
    m_pending.insert(m_pending.end(), m_taps.size() / 2, 0.0f);
    run(out);
    m_pending.clear();
    if (m_emitted > wanted) out.resize(out.size() - (m_emitted - wanted));
}

// m_pending[0] is the first tap's sample for the next output.
void StreamDecimator::run(std::vector<float>& out) {
    const std::size_t count = m_taps.size();
    std::size_t start = 0;
    for (; start + count <= m_pending.size(); start += m_factor) {
        const float* xs = m_pending.data() + start;
        const float* h = m_taps.data();
        float acc = 0;
#pragma omp simd reduction(+ : acc)
        for (std::size_t i = 0; i < count; ++i) acc += h[i] * xs[i];
        out.push_back(acc);
        ++m_emitted;
    }
    m_pending.erase(m_pending.begin(), m_pending.begin() + static_cast<std::ptrdiff_t>(start));
}

std::vector<float> Resample(const std::vector<float>& input, int fromRate, int toRate) {
    if (fromRate == toRate || input.empty()) return input;
    if (fromRate % toRate == 0) {
        StreamDecimator d(fromRate / toRate);
        std::vector<float> out;
        out.reserve(input.size() / static_cast<std::size_t>(fromRate / toRate) + 1);
        for (std::size_t at = 0; at < input.size(); at += 16384)
            d.push(input.data() + at, std::min<std::size_t>(16384, input.size() - at), out);
        d.finish(out);
        return out;
    }
    const double ratio = static_cast<double>(toRate) / fromRate;
    std::vector<float> out(static_cast<std::size_t>(std::ceil(input.size() * ratio)) + 16);
    SRC_DATA data{};
    data.data_in = input.data();
    data.input_frames = static_cast<long>(input.size());
    data.data_out = out.data();
    data.output_frames = static_cast<long>(out.size());
    data.src_ratio = ratio;
    if (src_simple(&data, SRC_SINC_FASTEST, 1) != 0) return {};
    out.resize(static_cast<std::size_t>(data.output_frames_gen));
    return out;
}

std::optional<Recording> LoadRecording(const std::filesystem::path& path, int workRate,
                                       std::string& error) {
    SF_INFO info{};
    std::unique_ptr<SNDFILE, SndCloser> file(sf_open(path.c_str(), SFM_READ, &info));
    if (!file) {
        error = Named(path, sf_strerror(nullptr));
        return std::nullopt;
    }
    if (info.channels < 1 || info.samplerate < 1000 || info.samplerate > 768000) {
        error = Named(path, "unsupported channel count or sample rate");
        return std::nullopt;
    }
    Recording rec;
    rec.fileRate = info.samplerate;
    rec.fileChannels = info.channels;
    rec.seconds = info.frames > 0 ? static_cast<double>(info.frames) / info.samplerate : 0;
    rec.rate = workRate > 0 ? WorkingRate(info.samplerate, workRate) : info.samplerate;
    std::optional<StreamDecimator> decimator;
    if (rec.rate != info.samplerate && info.samplerate % rec.rate == 0)
        decimator.emplace(info.samplerate / rec.rate);
    // The header's frame count may be a lie: room is made ahead for no more frames than
    // the file has bytes, and the samples grow past that only as they really arrive.
    std::error_code ec;
    const auto bytes = static_cast<sf_count_t>(std::filesystem::file_size(path, ec));
    if (info.frames > 0 && !ec)
        rec.samples.reserve(static_cast<std::size_t>(
            std::min(info.frames, bytes) * rec.rate / info.samplerate) + 1);
    if (!ReadMono(file.get(), info, decimator ? &*decimator : nullptr, rec.samples)) {
        error = Named(path, "damaged or too long");
        return std::nullopt;
    }
    if (!decimator && rec.rate != info.samplerate && !rec.samples.empty()) {
        rec.samples = Resample(rec.samples, info.samplerate, rec.rate);
        if (rec.samples.empty()) {
            error = Named(path, "resampling failed");
            return std::nullopt;
        }
    }
    return rec;
}

} // namespace tahrir::transcribe
