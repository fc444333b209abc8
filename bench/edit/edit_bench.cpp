// One Enter that commits a note on a full score: the store, the undo page written to the
// store file, and the layout of the whole page again.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>

#include "app/render_layout.h"
#include "edit/basic_layout.h"
#include "edit/editor.h"
#include "edit/file_undo_pages.h"
#include "edit/key_codes.h"

namespace {

using namespace tahrir;

// A full sheet of 4/4 measures: a barline, then quarters and eighths.
void FillScore(core::ScoreSheet& sheet) {
    sheet.fill("        ");
    sheet.setLine(1, "       G  ");
    sheet.setLine(2, "TEMPO60");
    sheet.setLine(3, "RHYTM4/4");
    const char* measure[] = {"03 -1", "13  8", "23  8", "33  4K", "43  4", "53  8S", "63  8"};
    for (int i = 4; i <= core::MaxLines; ++i)
        sheet.setLine(i, measure[(i - 4) % 7]);
    sheet.LastLine = core::MaxLines;
    sheet.CurrentLine = 4;
}

struct NullHost : edit::EditorHost {
    std::optional<std::string> inputBox(const std::string&, const std::string&) override {
        return {};
    }
    void messageBox(const std::string&) override {}
};

void CommitOneNote(benchmark::State& state, edit::LayoutService& layout) {
    const auto folder = std::filesystem::temp_directory_path() /
                        ("tahrir-edit-bench-" + std::to_string(std::random_device()()));
    std::filesystem::create_directories(folder);
    {
        core::Document doc;
        FillScore(doc.Sheet);
        edit::FileUndoPages pages(folder / "tmp.ctz");
        edit::MemoryClipboard clipboard;
        NullHost host;
        edit::Editor editor(doc, {&layout, nullptr, &clipboard, &host, &pages}, folder);
        editor.documentReplaced();
        editor.editorClick();
        int step = 0;
        for (auto _ : state) {
            state.PauseTiming();
            doc.Sheet.CurrentLine = 1000; // the middle of the score: no growth
            doc.UndoIndex = 1;            // keeps the store file small across iterations
            editor.labelClick(1000);
            editor.keyPress(edit::Key::Digit(1 + step++ % 7), 0);
            state.ResumeTiming();
            editor.keyPress(edit::Key::Enter, 0);
        }
        benchmark::DoNotOptimize(doc.Sheet[1000]);
    }
    std::filesystem::remove_all(folder);
}

void BM_CommitNotePlainLayout(benchmark::State& state) {
    edit::BasicLayout layout;
    CommitOneNote(state, layout);
}
BENCHMARK(BM_CommitNotePlainLayout)->Unit(benchmark::kMillisecond);

// The renderer in the page view or the working view.
app::RenderLayout ViewLayout(render::View viewMode) {
    render::LayoutOptions options;
    options.ViewMode = viewMode;
    return app::RenderLayout(options);
}

void BM_CommitNotePageView(benchmark::State& state) {
    app::RenderLayout layout = ViewLayout(render::View::Page);
    CommitOneNote(state, layout);
}
BENCHMARK(BM_CommitNotePageView)->Unit(benchmark::kMillisecond);

void BM_CommitNoteWorkingView(benchmark::State& state) {
    app::RenderLayout layout = ViewLayout(render::View::Working);
    CommitOneNote(state, layout);
}
BENCHMARK(BM_CommitNoteWorkingView)->Unit(benchmark::kMillisecond);

} // namespace
