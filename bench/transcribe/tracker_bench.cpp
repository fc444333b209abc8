// Speed of the tracker for real recordings on three minutes of 44.1 kHz mono melody: the
// pitch track (resampling included) and the whole `tahrir-cli notes` process.

#include <benchmark/benchmark.h>
#include <sndfile.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "transcribe/pyin_tracker.h"
#include "transcribe/recording_loader.h"
#include "transcribe/recording_notes.h"

namespace {

using namespace tahrir::transcribe;

constexpr int kRate = 44100;

// Three minutes of 0.4 s notes with five partials, vibrato and a little noise.
std::vector<float> ThreeMinutes() {
    const double notes[] = {62, 63.5, 65, 67, 68.5, 70, 72, 70, 68.5, 67, 65, 63.5};
    std::vector<float> x;
    std::mt19937 rng(1);
    std::normal_distribution<float> noise(0.0f, 0.01f);
    double phase = 0;
    for (std::size_t i = 0; x.size() < static_cast<std::size_t>(180 * kRate); ++i) {
        const double hz = 440.0 * std::pow(2.0, (notes[i % 12] - 69) / 12);
        for (int s = 0; s < kRate * 4 / 10; ++s) {
            const double t = static_cast<double>(s) / kRate;
            phase += 6.283185307179586 * hz * std::pow(2.0, 20 * std::sin(34.5 * t) / 1200) / kRate;
            double v = 0;
            for (int k = 1; k <= 5; ++k) v += std::sin(k * phase) / k;
            x.push_back(static_cast<float>(0.3 * v * std::exp(-2 * t)) + noise(rng));
        }
    }
    return x;
}

struct BenchFile {
    BenchFile() : samples(ThreeMinutes()) {
        path = std::filesystem::temp_directory_path() /
               ("tahrir-bench-tracker-" + std::to_string(::getpid()) + ".wav");
        SF_INFO info{};
        info.samplerate = kRate;
        info.channels = 1;
        info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
        SNDFILE* f = sf_open(path.c_str(), SFM_WRITE, &info);
        sf_writef_float(f, samples.data(), static_cast<sf_count_t>(samples.size()));
        sf_close(f);
    }
    ~BenchFile() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    std::vector<float> samples;
    std::filesystem::path path;
};

const BenchFile& File() {
    static const BenchFile file;
    return file;
}

void BM_PitchTrackThreeMinutes44k(benchmark::State& state) {
    const BenchFile& file = File();
    PyinTracker tracker(TrackerRate);
    for (auto _ : state) {
        const auto frames = tracker.track(Resample(file.samples, kRate, TrackerRate));
        benchmark::DoNotOptimize(frames.data());
    }
}
BENCHMARK(BM_PitchTrackThreeMinutes44k)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_NotesCommandWholeProcess(benchmark::State& state) {
    const std::string command =
        std::string(TAHRIR_CLI) + " notes " + File().path.string() + " >/dev/null";
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0) state.SkipWithError("tahrir-cli notes failed");
    }
}
BENCHMARK(BM_NotesCommandWholeProcess)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
