// Transcription speed on a 3-minute 8-bit recording at 11000 samples a second: the pitch
// of the file, the three passes with their scratch files, and the pitch of every frame.

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "transcribe/note_passes.h"
#include "transcribe/pitch_finder.h"
#include "transcribe/wave_file.h"
#include "wave_writer.h"

namespace {

using namespace tahrir;
using namespace tahrir::transcribe;

// A folder of its own for the recording and the scratch files, removed at exit.
struct BenchFolder {
    BenchFolder() {
        path = std::filesystem::temp_directory_path() /
               ("tahrir-bench-transcribe-" + std::to_string(::getpid()));
        std::filesystem::create_directories(path);
        // Three minutes of half-second notes of three partials, a short silence after each.
        std::vector<test::ToneSpan> spans;
        const double scale[] = {261.63, 293.66, 302.27, 349.23, 392.0, 427.5, 466.16, 523.25};
        for (int i = 0; i < 300; ++i) {
            spans.push_back({scale[i % 8], 0.5, 3});
            spans.push_back({0, 0.1});
        }
        wave = path / "three-minutes.wav";
        test::WriteWaveFile(wave, test::WaveFileBytes(test::Melody(spans)));
    }
    ~BenchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::filesystem::path path;
    std::filesystem::path wave;
};

const BenchFolder& Folder() {
    static const BenchFolder folder;
    return folder;
}

// The first frame has a pitch: the finder reads one block of the file and stops.
void BM_WaveFilePitch(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(WaveFilePitch(Folder().wave));
}
BENCHMARK(BM_WaveFilePitch)->Unit(benchmark::kMillisecond);

// Reading the file, the three passes and the "tmp1", "tmp5", "tmp2", "tmp3" files.
void BM_ThreePasses(benchmark::State& state) {
    PassOptions options;
    options.MinDuration = 2;
    for (auto _ : state) {
        const auto bytes = ReadWaveBytes(Folder().wave);
        const std::string_view view(reinterpret_cast<const char*>(bytes->data()), bytes->size());
        const PassResult result = RunPasses(view, options, Folder().path);
        benchmark::DoNotOptimize(result.cleaned);
    }
}
BENCHMARK(BM_ThreePasses)->Unit(benchmark::kMillisecond);

// The pitch of every 256-sample frame, as the wave view draws it.
void BM_FramePitches(benchmark::State& state) {
    const auto samples = LoadWavMonoSamples(Folder().wave);
    for (auto _ : state) benchmark::DoNotOptimize(FramePitches(*samples));
    state.counters["frames"] = static_cast<double>(samples->size() / PitchFrameSize);
}
BENCHMARK(BM_FramePitches)->Unit(benchmark::kMillisecond);

} // namespace
