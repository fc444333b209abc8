#pragma once
// Loads a recording of any format libsndfile reads (WAV of any depth, FLAC, Ogg, MP3),
// mixed down to mono and brought to the rate the pitch tracker works at.

#include <filesystem>
#include <optional>
#include <cstddef>
#include <string>
#include <vector>

namespace tahrir::transcribe {

struct Recording {
    std::vector<float> samples; // mono, at `rate`
    int rate = 0;               // samples a second of `samples`
    int fileRate = 0;           // the file's own rate
    int fileChannels = 0;
    double seconds = 0;         // length of the file
};

// Reads `path`, mixes its channels to mono and resamples to WorkingRate(file's rate,
// `workRate`) (0 keeps the file's rate). On failure returns nullopt and a message naming the file in `error`.
std::optional<Recording> LoadRecording(const std::filesystem::path& path, int workRate,
                                       std::string& error);

// The rate the loader brings a file to for a wanted `workRate`: a whole fraction of the
// file's rate within a tenth of it when there is one (44100 -> 11025, 48000 -> 12000),
// else `workRate` itself.
int WorkingRate(int fileRate, int workRate);

// Low-passes and keeps every `factor`-th sample of a mono signal handed over in blocks.
class StreamDecimator {
public:
    explicit StreamDecimator(int factor);
    void push(const float* x, std::size_t n, std::vector<float>& out);
    // The outputs still owed once the signal has ended.
    void finish(std::vector<float>& out);

private:
    void run(std::vector<float>& out);
    std::size_t m_factor;
    std::vector<float> m_taps;
    std::vector<float> m_pending;
    std::size_t m_received = 0, m_emitted = 0;
};

// Resamples mono `input` from `fromRate` to `toRate`: by decimation when `toRate` divides
// `fromRate`, else through libsamplerate. An empty result means failure.
std::vector<float> Resample(const std::vector<float>& input, int fromRate, int toRate);

} // namespace tahrir::transcribe
