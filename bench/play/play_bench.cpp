// Playback speed: the virtual-time walk of a full sheet, the timing and processor use of
// real-time dispatch, and offline rendering through the built-in synthesiser.

#include <benchmark/benchmark.h>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "play/player.h"
#include "play/synth_sink.h"

namespace {

using namespace tahrir;
using namespace tahrir::play;

std::string NoteText(int step, int octave, int duration, char accidental, const char* mark) {
    char text[32];
    std::snprintf(text, sizeof text, "%d%d%3d%c %-2.2s", step, octave, duration, accidental, mark);
    std::string line = text;
    line.resize(22, ' ');
    return line;
}

// A 4/4 sheet filled to `lines` with quarter-tone notes, ornaments, barlines and repeats.
core::ScoreSheet MakeSheet(int lines, int duration) {
    static const char kAccidentals[] = {' ', 'K', 'S', ' ', 'D', 'B', 'N'};
    static const char* kMarks[] = {"  ", "TR", "  ", "D ", "  ", "AC", "M ", "  ", ". ", "T "};
    core::ScoreSheet sheet;
    sheet.setLine(1, "  K    G               ");
    sheet.setLine(2, "TEMPO120               ");
    sheet.setLine(3, "RHYTM4/4               ");
    int i = 4, n = 0, position = 0;
    while (i <= lines) {
        if (i % 200 == 4)
            sheet.setLine(i++, "REP{                  ");
        else if (i % 200 == 150)
            sheet.setLine(i++, "REP}                  ");
        else if (position >= 32) {
            sheet.setLine(i++, "03 -1                 ");
            position = 0;
        } else {
            sheet.setLine(
                i++, NoteText(1 + n % 7, 3 + n % 2, duration, kAccidentals[n % 7], kMarks[n % 10]));
            position += duration;
            ++n;
        }
    }
    sheet.LastLine = std::min(lines, core::MaxLines);
    return sheet;
}

class CountingSink : public MidiSink {
public:
    void send(std::uint32_t, double) override { ++count; }
    long long count = 0;
};

void BM_VirtualWalkFullSheet(benchmark::State& state) {
    const core::ScoreSheet sheet = MakeSheet(core::MaxLines, 8);
    CountingSink sink;
    Player player(&sink);
    player.startUp();
    double seconds = 0;
    for (auto _ : state) {
        seconds = player.playVirtual(sheet, {});
        benchmark::DoNotOptimize(seconds);
    }
    state.counters["music_seconds"] = seconds;
    state.counters["messages_per_run"] =
        static_cast<double>(sink.count) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_VirtualWalkFullSheet)->Unit(benchmark::kMillisecond);

// Records how late each message leaves against the time the walk gave it.
class LatenessSink : public MidiSink {
public:
    explicit LatenessSink(const RealtimeClock& clock) : m_clock(clock) { m_late.reserve(1 << 16); }
    void send(std::uint32_t, double seconds) override {
        if (m_late.size() < m_late.capacity()) m_late.push_back(m_clock.runSeconds() - seconds);
    }
    std::vector<double> m_late;

private:
    const RealtimeClock& m_clock;
};

double CpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

void BM_RealtimeDispatch(benchmark::State& state) {
    const core::ScoreSheet sheet = MakeSheet(120, 2); // sixteenths at tempo 120 with ornaments
    for (auto _ : state) {
        Player* player = nullptr;
        std::unique_ptr<LatenessSink> sink;
        auto owner = std::make_unique<Player>(nullptr);
        player = owner.get();
        sink = std::make_unique<LatenessSink>(player->realtimeClock());
        player->midi().setSink(sink.get());
        player->startUp();
        player->controls().UserTempo = 120;
        sink->m_late.clear();
        const double cpu0 = CpuSeconds();
        const auto wall0 = std::chrono::steady_clock::now();
        player->play(sheet, {});
        player->wait();
        const double wall =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - wall0).count();
        const double cpu = CpuSeconds() - cpu0;
        std::vector<double> late = sink->m_late;
        std::sort(late.begin(), late.end(),
                  [](double a, double b) { return std::fabs(a) < std::fabs(b); });
        const auto at = [&](double q) {
            return late.empty() ? 0
                                : std::fabs(late[static_cast<std::size_t>(
                                      q * static_cast<double>(late.size() - 1))]);
        };
        state.counters["p50_error_ms"] = at(0.5) * 1000;
        state.counters["p99_error_ms"] = at(0.99) * 1000;
        state.counters["max_error_ms"] = at(1.0) * 1000;
        state.counters["cpu_percent"] = 100 * cpu / wall;
        state.counters["messages"] = static_cast<double>(late.size());
        state.counters["run_seconds"] = wall;
    }
}
BENCHMARK(BM_RealtimeDispatch)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_OfflineWavRendering(benchmark::State& state) {
    const core::ScoreSheet sheet = MakeSheet(400, 4);
    const auto wav = std::filesystem::temp_directory_path() /
                     ("tahrir_bench_" + std::to_string(::getpid()) + ".wav");
    double audio = 0, wall = 0;
    for (auto _ : state) {
        const auto t0 = std::chrono::steady_clock::now();
        std::string error;
        auto synth = SynthSink::openOffline(DefaultSoundFont(), wav, error);
        if (!synth) {
            state.SkipWithError(error.c_str());
            break;
        }
        {
            Player player(synth.get());
            player.startUp();
            player.controls().UserTempo = 120;
            player.playVirtual(sheet, {});
        }
        synth->finish();
        audio += synth->renderedSeconds();
        wall += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    }
    std::filesystem::remove(wav);
    state.counters["audio_seconds_per_run"] =
        audio / static_cast<double>(std::max<std::int64_t>(1, state.iterations()));
    state.counters["times_real_time"] = wall > 0 ? audio / wall : 0;
}
BENCHMARK(BM_OfflineWavRendering)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
