// Reading and dumping a file of 200,000 notes (target: under 150 ms), and writing the
// exact file from a long play log.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "big_midi_file.h"
#include "midifile/midi_reader.h"
#include "midifile/midi_writer.h"

namespace {

using tahrir::midifile::Bytes;

void BM_ReadAndDump200kNotes(benchmark::State& state) {
    const Bytes file = tahrir::bench::BigMidiFile(2, 100000);
    std::size_t lines = 0;
    for (auto _ : state) {
        tahrir::midifile::DumpList dump;
        const auto info = tahrir::midifile::ReadMidiBytes(file, dump);
        benchmark::DoNotOptimize(info.MidiTracks.data());
        lines = dump.lines.size();
    }
    state.counters["lines"] = static_cast<double>(lines);
}
BENCHMARK(BM_ReadAndDump200kNotes)->Unit(benchmark::kMillisecond);

void BM_WriteExactFile(benchmark::State& state) {
    std::vector<tahrir::midifile::EventRecord> log;
    for (int i = 0; i < 100000; ++i) log.push_back({0.25, 40 + i / 2 % 40, 3, i % 2 ? 0 : 90});
    for (auto _ : state) {
        auto result = tahrir::midifile::WriteMidiFile(log, 72);
        benchmark::DoNotOptimize(result.bytes.data());
    }
}
BENCHMARK(BM_WriteExactFile)->Unit(benchmark::kMillisecond);

} // namespace
