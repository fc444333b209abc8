// Exporting a score of 2,000 lines as MusicXML (target: under 20 ms).

#include <benchmark/benchmark.h>

#include <string>

#include "core/rhythm_pass.h"
#include "core/score_reader.h"
#include "musicxml/score_export.h"

namespace {

// Two measures of 4/4 with beams, accidentals, a tuplet, a tie, marks, a chord symbol,
// lyrics and text, repeated until the sheet holds 2,000 lines.
tahrir::core::Document LongScore() {
    const char* cycle[] = {"03 -1",     "L^Ms=1", "L_\xC8\xC7",  "13  4K TI", "13  4",
                           "43  4  TR", "43  4",  "63  8  . AM", "73  8N",    "L^Daramad",
                           "33  4  L3", "23  4",  "13  4",       "53 -1",     "43  8S T ",
                           "03  8",     "ALL7K",  "54 12  D "};
    std::string bytes = "\"Sv5\"\r\n\"Title\"\r\n   S  KG\r\nTEMPO72\r\nRHYTM4/4\r\n";
    for (int line = 4, k = 0; line <= 2000; ++line, k = (k + 1) % std::size(cycle))
        bytes += std::string(cycle[k]) + "\r\n";
    tahrir::core::Document doc;
    tahrir::core::ParseScore(bytes, false, doc);
    tahrir::core::RhythmPass(doc.Sheet);
    return doc;
}

void BM_Export2000Lines(benchmark::State& state) {
    const tahrir::core::Document doc = LongScore();
    std::size_t size = 0;
    for (auto _ : state) {
        const std::string xml = tahrir::musicxml::ExportMusicXml(doc);
        size = xml.size();
        benchmark::DoNotOptimize(xml.data());
    }
    state.counters["lines"] = doc.Sheet.LastLine;
    state.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK(BM_Export2000Lines)->Unit(benchmark::kMillisecond);

} // namespace
