// Reading and dumping a file of 200,000 notes (target: under 150 ms), and writing the
// exact file from a long play log.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "midifile/midi_reader.h"
#include "midifile/midi_writer.h"

namespace {

using tahrir::midifile::Bytes;

void AppendVlq(Bytes& out, std::uint32_t value) {
    if (value >= 128) out.push_back(static_cast<std::uint8_t>(0x80 | value >> 7));
    out.push_back(static_cast<std::uint8_t>(value & 0x7F));
}

// Two tracks of 100,000 notes each with a tempo change every thousand notes, running
// status on every other event.
Bytes BigFile() {
    Bytes out = {'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, 1, 0, 2, 0x01, 0xE0};
    for (int track = 0; track < 2; ++track) {
        Bytes body;
        for (int i = 0; i < 100000; ++i) {
            if (i % 1000 == 0) body.insert(body.end(), {0x00, 0xFF, 0x51, 0x03, 0x07, 0xA1, 0x20});
            const auto key = static_cast<std::uint8_t>(36 + i % 60);
            AppendVlq(body, 60);
            body.insert(body.end(), {0x90, key, 90});
            AppendVlq(body, 180);
            body.insert(body.end(), {key, 0});
        }
        body.insert(body.end(), {0x00, 0xFF, 0x2F, 0x00});
        out.insert(out.end(), {'M', 'T', 'r', 'k'});
        const auto n = static_cast<std::uint32_t>(body.size());
        out.insert(out.end(), {static_cast<std::uint8_t>(n >> 24), static_cast<std::uint8_t>(n >> 16),
                               static_cast<std::uint8_t>(n >> 8), static_cast<std::uint8_t>(n)});
        out.insert(out.end(), body.begin(), body.end());
    }
    return out;
}

void BM_ReadAndDump200kNotes(benchmark::State& state) {
    const Bytes file = BigFile();
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
