// The wave voices: the Shur demo rendered offline on the tar voice, and how soon a note
// on posted from the player's thread comes out of the audio side.

#include <benchmark/benchmark.h>

#include <pthread.h>
#include <sched.h>
#include <sys/prctl.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>
#include <vector>

#include "core/document.h"
#include "core/score_reader.h"
#include "play/player.h"
#include "play/synth_sink.h"
#include "play/wave_voices.h"

namespace {

using namespace tahrir;
using namespace tahrir::play;
using Clock = std::chrono::steady_clock;

void BM_ShurOnTarOffline(benchmark::State& state) {
    std::ifstream in(std::filesystem::path(TAHRIR_DATA_DIR) / "demo" / "shur-daramad.srv",
                     std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    core::Document doc;
    core::ParseScore(bytes, false, doc);
    WaveVoices voices;
    if (voices.loadSamples(TAHRIR_DATA_DIR, {}) == 0) return state.SkipWithError("no samples");
    const auto wav = std::filesystem::temp_directory_path() / "tahrir-bench-shur-tar.wav";
    double music = 0, wall = 0;
    for (auto _ : state) {
        // The SoundFont is read once per run by the command line too; only rendering counts.
        state.PauseTiming();
        std::string error;
        auto sink = SynthSink::openOffline(DefaultSoundFont(), wav, error);
        if (!sink) return state.SkipWithError(error.c_str());
        sink->attachVoices(&voices);
        Player player(sink.get());
        player.startUp(-1);
        player.clickTar();
        player.controls().UserTempo = doc.TempoSlider > 0 ? doc.TempoSlider : 60;
        state.ResumeTiming();
        const auto start = Clock::now();
        player.playVirtual(doc.Sheet, {});
        sink->finish();
        wall += std::chrono::duration<double>(Clock::now() - start).count();
        music += sink->renderedSeconds();
    }
    std::filesystem::remove(wav);
    state.counters["music_seconds"] = music / static_cast<double>(state.iterations());
    state.counters["times_real_time"] = music / wall;
}
BENCHMARK(BM_ShurOnTarOffline)->Unit(benchmark::kMillisecond)->UseRealTime();

// The audio side as the sound server drives it: 64 frames every 1.45 ms. A note on is
// posted from another thread; the time until the block holding its first sample is made.
void BM_LiveNoteOnToFirstSample(benchmark::State& state) {
    WaveVoices voices;
    if (voices.loadSamples(TAHRIR_DATA_DIR, {}) == 0) return state.SkipWithError("no samples");
    constexpr int kPeriod = 64;
    std::atomic<bool> quit{false};
    std::atomic<long long> soundedAt{0}; // steady clock ticks of the first sample, 0 before
    std::thread audio([&] {
        // A sound server's thread runs at a real-time priority where it may.
        prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
        sched_param param{};
        param.sched_priority = 10;
        pthread_setschedparam(pthread_self(), SCHED_FIFO, &param);
        std::vector<float> left(kPeriod), right(kPeriod);
        auto next = Clock::now();
        while (!quit.load()) {
            std::fill(left.begin(), left.end(), 0.0f);
            voices.mix(left.data(), right.data(), kPeriod, 1);
            if (soundedAt.load() == 0 &&
                std::any_of(left.begin(), left.end(), [](float v) { return v != 0.0f; }))
                soundedAt = Clock::now().time_since_epoch().count();
            next += std::chrono::microseconds(1000000 * kPeriod / 44100);
            std::this_thread::sleep_until(next);
        }
    });
    std::vector<double> latencies;
    for (auto _ : state) {
        voices.post({WaveBank::Tar, WaveAction::StopAll, 0});
        std::this_thread::sleep_for(std::chrono::milliseconds(20)); // the fade is over
        soundedAt = 0;
        const auto posted = Clock::now();
        voices.post({WaveBank::Tar, WaveAction::Play, 20});
        while (soundedAt.load() == 0)
            std::this_thread::yield();
        latencies.push_back(
            std::chrono::duration<double, std::milli>(Clock::duration(soundedAt.load()) -
                                                      posted.time_since_epoch())
                .count());
    }
    quit = true;
    audio.join();
    std::sort(latencies.begin(), latencies.end());
    state.counters["median_ms"] = latencies[latencies.size() / 2];
    state.counters["max_ms"] = latencies.back();
}
BENCHMARK(BM_LiveNoteOnToFirstSample)->Iterations(100)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
