// Loading a full 2048-line score: the reader with the rhythm pass, then with the undo
// store filled as the open command does.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "core/page_store.h"
#include "core/score_reader.h"
#include "core/session.h"

namespace {

using namespace tahrir::core;

// A score of 4/4 measures of eighth notes up to line 2048, in a fresh folder.
class FullScore {
public:
    FullScore() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tahrir-bench-XXXXXX").string();
        m_folder = ::mkdtemp(pattern.data());
        std::ofstream out(file(), std::ios::binary);
        out << "\"Sv5\"\r\n\"bench\"\r\n" << Scratch("       G") << "\r\n"
            << Scratch("TEMPO 72") << "\r\n" << Scratch("RHYTM4/4") << "\r\n";
        const char* steps = "1234567";
        for (int line = 4, n = 0; line <= MaxLines; ++line, ++n) {
            const std::string text = n % 9 == 0 ? "03 -1" : std::string(1, steps[n % 7]) + "4  4  ";
            out << Scratch(text) << "\r\n";
        }
        StartSession(m_session, m_folder);
    }
    ~FullScore() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    std::string file() const { return (m_folder / "full.srv").string(); }
    const Session& session() const { return m_session; }

private:
    std::filesystem::path m_folder;
    Session m_session;
};

FullScore& Score() {
    static FullScore score;
    return score;
}

void BM_ReadScoreWithRhythmPass(benchmark::State& state) {
    Document doc;
    for (auto _ : state) {
        doc.CurrentFileName = Score().file();
        const LoadResult result = Openp(doc, Score().session(), nullptr);
        benchmark::DoNotOptimize(result);
        if (doc.Sheet.LastLine != MaxLines) state.SkipWithError("score not fully read");
    }
}
BENCHMARK(BM_ReadScoreWithRhythmPass)->Unit(benchmark::kMicrosecond);

void BM_FullLoadWithPageStore(benchmark::State& state) {
    Document doc;
    PageStore store(PageStore::PathIn(Score().session().AppFolder));
    for (auto _ : state) {
        doc.CurrentFileName = Score().file();
        const LoadResult result = Openp(doc, Score().session(), &store);
        if (!result.storeError.empty()) state.SkipWithError(result.storeError.c_str());
    }
}
BENCHMARK(BM_FullLoadWithPageStore)->Unit(benchmark::kMillisecond);

} // namespace
