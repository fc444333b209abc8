#include "transcribe/recording_loader.h"

#include <samplerate.h>
#include <sndfile.h>

#include <cmath>
#include <memory>

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

// Reads every frame, averaging the channels.
bool ReadMono(SNDFILE* file, const SF_INFO& info, std::vector<float>& mono) {
    const auto channels = static_cast<std::size_t>(info.channels);
    std::vector<float> block(static_cast<std::size_t>(kBlockFrames) * channels);
    if (info.frames > 0) mono.reserve(static_cast<std::size_t>(info.frames));
    const float scale = 1.0f / static_cast<float>(channels);
    for (;;) {
        const sf_count_t got = sf_readf_float(file, block.data(), kBlockFrames);
        if (got <= 0) break;
        for (sf_count_t i = 0; i < got; ++i) {
            float sum = 0;
            for (std::size_t c = 0; c < channels; ++c)
                sum += block[static_cast<std::size_t>(i) * channels + c];
            const float v = sum * scale;
            mono.push_back(std::isfinite(v) ? v : 0.0f);
        }
        if (static_cast<double>(mono.size()) > kMaxSeconds * info.samplerate) return false;
    }
    return sf_error(file) == SF_ERR_NO_ERROR;
}

} // namespace

std::vector<float> Resample(const std::vector<float>& input, int fromRate, int toRate) {
    if (fromRate == toRate || input.empty()) return input;
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
    if (!ReadMono(file.get(), info, rec.samples)) {
        error = Named(path, "damaged or too long");
        return std::nullopt;
    }
    rec.seconds = static_cast<double>(rec.samples.size()) / info.samplerate;
    rec.rate = info.samplerate;
    if (workRate > 0 && workRate != info.samplerate && !rec.samples.empty()) {
        rec.samples = Resample(rec.samples, info.samplerate, workRate);
        if (rec.samples.empty()) {
            error = Named(path, "resampling failed");
            return std::nullopt;
        }
        rec.rate = workRate;
    }
    return rec;
}

} // namespace tahrir::transcribe
